#include "tests/native/addressbook/AddressBookFixture.h"

namespace ktrv::tests {
namespace {

using controls::MouseButton;
using Lines = std::vector<String>;

constexpr StringView kTreeContext =
    u"KTRVAddressBook: Error occurred. Sub : LoadTreeView, Module: frmAddressBook";

struct FolderTreeTest : AddressBookTest {
  /// Two shared folders, a remote one, a group in the root and one in the second folder.
  void Typical() {
    SharedFolders({{u"1", u"Friends"}, {u"7", u"Staff"}});
    RemoteFolders({{u"3", u"Dealers"}});
    Groups({{u"5", u"Everyone", u"0"}, {u"6", u"Drivers", u"7"}});
  }
};

TEST_F(FolderTreeTest, AnEmptyDatabaseGivesTheRootAlone) {
  Open();
  EXPECT_EQ(Tree(), (Lines{u"SHARED:Shared Contacts"}));
  EXPECT_EQ(Node(u"SHARED").Tag, u"SHARED");
  EXPECT_EQ(Node(u"SHARED").ImageIndex, 1);
  EXPECT_EQ(Node(u"SHARED").SelectedImageIndex, 0);
  EXPECT_EQ(Log(), u"");
}

TEST_F(FolderTreeTest, FoldersStandUnderTheRootAndGroupsUnderTheRootOrTheirFolder) {
  Typical();
  Open();
  EXPECT_EQ(Tree(), (Lines{u"SHARED:Shared Contacts", u".SFLD1:Friends", u".SFLD7:Staff",
                           u".RFLD3:Dealers", u".SHGR5:Everyone", u"..SHGR6:Drivers"}));
}

TEST_F(FolderTreeTest, FoldersShowImageFourSelectedToo) {
  Typical();
  Open();
  for (const StringView key : {u"SFLD1", u"RFLD3"}) {
    EXPECT_EQ(Node(key).ImageIndex, 4);
    EXPECT_EQ(Node(key).SelectedImageIndex, 4);
    EXPECT_EQ(Node(key).Tag, u"");
  }
}

TEST_F(FolderTreeTest, GroupsShowImageThree) {
  Typical();
  Open();
  EXPECT_EQ(Node(u"SHGR6").ImageIndex, 3);
  EXPECT_EQ(Node(u"SHGR6").SelectedImageIndex, 0);
  EXPECT_EQ(Node(u"SHGR6").Tag, u"");
}

TEST_F(FolderTreeTest, TheImageListHoldsThePicturesOfItsPlaces) {
  using controls::Image;
  const auto& images = Open().tvwContacts.Images();
  ASSERT_EQ(images.size(), 4U);
  EXPECT_EQ(images[0], Image::SharedContacts);
  EXPECT_EQ(images[2], Image::Group);
  EXPECT_EQ(images[3], Image::Folder);
}

TEST_F(FolderTreeTest, NodesStandInTheOrderOfTheRows) {
  SharedFolders({{u"9", u"Zebra"}, {u"2", u"Ant"}});
  Open();
  EXPECT_EQ(Tree(), (Lines{u"SHARED:Shared Contacts", u".SFLD9:Zebra", u".SFLD2:Ant"}));
}

TEST_F(FolderTreeTest, AFolderThatNamesAParentStandsUnderTheRootStill) {
  driver.Answer(Queries::kSharedFolders, {{u"ID"}, {u"NAME"}, {u"PARENTFOLDERID"}},
                {{u"1", u"Friends", u"0"}, {u"2", u"Close friends", u"1"}});
  Open();
  EXPECT_EQ(Node(u"SFLD2").Parent, &Node(u"SHARED"));
}

TEST_F(FolderTreeTest, ANameOfNullIsAnEmptyText) {
  SharedFolders({{u"1", std::nullopt}});
  Open();
  EXPECT_EQ(Node(u"SFLD1").Text, u"");
}

TEST_F(FolderTreeTest, TheThreeQueriesRunOnLinksOfTheSessionsString) {
  Open();
  const auto ran = driver.Executed();
  ASSERT_GE(ran.size(), 3U);
  EXPECT_EQ(ran[0].Text, u"SELECT ID , NAME , PARENTFOLDERID FROM SMS_ABFOLDERS WHERE TYPE = 'S'");
  EXPECT_EQ(ran[1].Text,
            u"SELECT ID, NAME, PARENTFOLDERID, REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS WHERE "
            u"TYPE = 'R'");
  EXPECT_EQ(ran[2].Text, u"SELECT ID,NAME,FOLDER_ID FROM SMS_ABGROUPS");
  EXPECT_EQ(driver.Opened().front(), u"DSN=Test");
}

TEST_F(FolderTreeTest, NoResultOfABuildStaysOpen) {
  Open();
  EXPECT_EQ(driver.LinksAlive(), 1);  // the session's own, for the counts
}

// Failures.

TEST_F(FolderTreeTest, AFailingQueryEndsTheBuildAndKeepsTheNodesBeforeIt) {
  Typical();
  driver.Fail(Queries::kRemoteFolders, Error(ErrorNumber::DriverFailure, u"no such view"));
  Open();
  EXPECT_EQ(Tree(), (Lines{u"SHARED:Shared Contacts", u".SFLD1:Friends", u".SFLD7:Staff"}));
  EXPECT_EQ(ErrorsLogged(kTreeContext), 1);
  EXPECT_TRUE(Ran(Queries::kGroups).empty());
  EXPECT_TRUE(form->IsVisible());
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(FolderTreeTest, AGroupOfAFolderThatIsNotThereEndsTheBuild) {
  SharedFolders({{u"1", u"Friends"}});
  Groups({{u"5", u"Everyone", u"0"}, {u"6", u"Lost", u"99"}, {u"8", u"Later", u"0"}});
  Open();
  EXPECT_EQ(Tree(), (Lines{u"SHARED:Shared Contacts", u".SFLD1:Friends", u".SHGR5:Everyone"}));
  EXPECT_EQ(ErrorsLogged(kTreeContext), 1);
}

TEST_F(FolderTreeTest, AGroupIsNeverPutUnderARemoteFolder) {
  RemoteFolders({{u"3", u"Dealers"}});
  Groups({{u"6", u"Drivers", u"3"}});
  Open();
  EXPECT_EQ(Tree(), (Lines{u"SHARED:Shared Contacts", u".RFLD3:Dealers"}));
  EXPECT_EQ(ErrorsLogged(kTreeContext), 1);
}

TEST_F(FolderTreeTest, AFolderIdTwiceEndsTheBuild) {
  SharedFolders({{u"1", u"Friends"}, {u"1", u"Again"}});
  Open();
  EXPECT_EQ(Tree(), (Lines{u"SHARED:Shared Contacts", u".SFLD1:Friends"}));
  EXPECT_EQ(ErrorsLogged(kTreeContext), 1);
}

// The start.

TEST_F(FolderTreeTest, AtTheServerTheRootIsSelectedAndItsContentsAreLoaded) {
  RunAt(RunApplicationAt::RuntAtServer);
  Open();
  EXPECT_EQ(form->tvwContacts.SelectedNode(), &Node(u"SHARED"));
  EXPECT_EQ(form->Current().Key, u"SHARED");
  EXPECT_EQ(form->Current().Tag, u"SHARED");
  EXPECT_EQ(Ran(Queries::kCountFolderContacts).size(), 1U);
}

TEST_F(FolderTreeTest, AtTheClientNothingIsSelectedAndNothingIsQueriedForTheList) {
  Open();
  EXPECT_EQ(form->tvwContacts.SelectedNode(), nullptr);
  EXPECT_EQ(form->Current().Key, u"");
  EXPECT_TRUE(Ran(u"COUNT(1)").empty());
  EXPECT_TRUE(Ran(u"AS CONTACTTYPE").empty());
}

TEST_F(FolderTreeTest, TheRootStartsExpanded) {
  Typical();
  Open();
  EXPECT_TRUE(Node(u"SHARED").Expanded);
}

TEST_F(FolderTreeTest, AtTheClientTheSecondNodeStartsExpandedWhateverItIs) {
  RemoteFolders({{u"3", u"Dealers"}});
  Open();
  EXPECT_TRUE(Node(u"RFLD3").Expanded);
}

TEST_F(FolderTreeTest, AtTheServerTheSecondNodeIsLeftCollapsed) {
  RunAt(RunApplicationAt::RuntAtServer);
  Typical();
  Open();
  EXPECT_FALSE(Node(u"SFLD1").Expanded);
}

// Rebuilds.

TEST_F(FolderTreeTest, ARootThatTheUserCollapsedComesBackCollapsedAtTheClient) {
  Typical();
  Open();
  form->tvwContacts.UserExpands(Node(u"SHARED"), false);
  form->LoadTreeView();
  EXPECT_FALSE(Node(u"SHARED").Expanded);
  form->LoadTreeView();
  EXPECT_FALSE(Node(u"SHARED").Expanded);
}

TEST_F(FolderTreeTest, ARootThatTheUserCollapsedComesBackCollapsedAtTheServer) {
  RunAt(RunApplicationAt::RuntAtServer);
  Typical();
  Open();
  form->tvwContacts.UserExpands(Node(u"SHARED"), false);
  form->LoadTreeView();
  EXPECT_FALSE(Node(u"SHARED").Expanded);
}

TEST_F(FolderTreeTest, ExpandedAgainItStaysExpanded) {
  Typical();
  Open();
  form->tvwContacts.UserExpands(Node(u"SHARED"), false);
  form->tvwContacts.UserExpands(Node(u"SHARED"), true);
  form->LoadTreeView();
  EXPECT_TRUE(Node(u"SHARED").Expanded);
}

TEST_F(FolderTreeTest, CollapsingAFolderIsNotRemembered) {
  Typical();
  Groups({{u"6", u"Drivers", u"1"}});
  Open();
  form->tvwContacts.UserExpands(Node(u"SFLD1"), false);
  form->LoadTreeView();
  EXPECT_TRUE(Node(u"SFLD1").Expanded);
  EXPECT_TRUE(Node(u"SHARED").Expanded);
}

TEST_F(FolderTreeTest, ARebuildAtTheClientKeepsTheCurrentNodeAndShowsItSelected) {
  Typical();
  Open();
  ClickAndWait(u"SFLD7");
  form->LoadTreeView();
  EXPECT_EQ(form->Current().Key, u"SFLD7");
  EXPECT_EQ(form->tvwContacts.SelectedNode(), &Node(u"SFLD7"));
}

TEST_F(FolderTreeTest, ARebuildWithoutTheCurrentNodeKeepsTheKeyAndSelectsNothing) {
  Typical();
  Open();
  ClickAndWait(u"SFLD7");
  Groups({});
  SharedFolders({{u"1", u"Friends"}});
  form->LoadTreeView();
  EXPECT_EQ(form->Current().Key, u"SFLD7");
  EXPECT_EQ(form->tvwContacts.SelectedNode(), nullptr);
}

TEST_F(FolderTreeTest, ARebuildThatFailsShowsTheCurrentNodeSelectedTooWhenItIsThere) {
  Typical();
  Open();
  ClickAndWait(u"SHARED");
  Groups({{u"6", u"Lost", u"99"}});
  form->LoadTreeView();
  EXPECT_EQ(ErrorsLogged(kTreeContext), 1);
  EXPECT_EQ(form->tvwContacts.SelectedNode(), &Node(u"SHARED"));
}

TEST_F(FolderTreeTest, ACurrentNodeBelowACollapsedOneIsNotSelectedByARebuild) {
  Typical();
  Open();
  ClickAndWait(u"SFLD7");
  form->tvwContacts.SetExpanded(Node(u"SHARED"), false);
  form->LoadTreeView();
  EXPECT_FALSE(Node(u"SHARED").Expanded);
  EXPECT_EQ(form->Current().Key, u"SFLD7");
  EXPECT_EQ(form->tvwContacts.SelectedNode(), nullptr);
}

TEST_F(FolderTreeTest, ARebuildAtTheServerMakesTheRootCurrent) {
  RunAt(RunApplicationAt::RuntAtServer);
  Typical();
  Open();
  ClickAndWait(u"SFLD7");
  form->LoadTreeView();
  EXPECT_EQ(form->Current().Key, u"SHARED");
  EXPECT_EQ(form->tvwContacts.SelectedNode(), &Node(u"SHARED"));
}

TEST_F(FolderTreeTest, TheNextLoadStartsWithTheRootExpanded) {
  Typical();
  Open();
  form->tvwContacts.UserExpands(Node(u"SHARED"), false);
  form->Unload();
  screen.Pump();
  Open();
  EXPECT_TRUE(Node(u"SHARED").Expanded);
}

// A top-level node of personal contacts, which no database gives.

TEST_F(FolderTreeTest, PersonalContactsCollapsedLeaveTheSecondNodeCollapsedAtTheClient) {
  Typical();
  Groups({{u"6", u"Drivers", u"1"}});
  Open();
  ASSERT_TRUE(Node(u"SFLD1").Expanded);
  auto& personal = form->tvwContacts.Add({}, u"MAIN", u"Personal", 2);
  form->tvwContacts.Add(u"MAIN", u"LOGR1", u"Friends", 3);
  form->tvwContacts.UserExpands(personal, true);
  form->tvwContacts.UserExpands(personal, false);
  form->LoadTreeView();
  EXPECT_FALSE(Node(u"SFLD1").Expanded);
  EXPECT_TRUE(Node(u"SHARED").Expanded);
}

TEST_F(FolderTreeTest, PersonalContactsAreTheirOwnParentAndListNothing) {
  Open();
  form->tvwContacts.Add({}, u"MAIN", u"Personal", 2);
  const std::size_t before = driver.Executed().size();
  Click(u"MAIN");
  EXPECT_EQ(form->Current().ParentKey, u"MAIN");
  EXPECT_EQ(driver.Executed().size(), before);
  EXPECT_EQ(Log(), u"");
}

TEST_F(FolderTreeTest, PersonalContactsCannotBeDeleted) {
  Open();
  form->tvwContacts.Add({}, u"MAIN", u"Personal", 2);
  Click(u"MAIN");
  form->tvwContacts.UserFocuses(true);
  form->tvwContacts.UserPresses(controls::KeyCode::Delete, 0);
  ASSERT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage().Text, u"The item cannot be deleted.");
}

// Events.

TEST_F(FolderTreeTest, AClickMakesTheNodeCurrentWithItsTagAndParent) {
  Typical();
  Open();
  ClickAndWait(u"SHGR6");
  EXPECT_EQ(form->Current().Key, u"SHGR6");
  EXPECT_EQ(form->Current().Tag, u"");
  EXPECT_EQ(form->Current().ParentKey, u"SFLD7");
}

TEST_F(FolderTreeTest, TheRootIsItsOwnParent) {
  Open();
  ClickAndWait(u"SHARED");
  EXPECT_EQ(form->Current().Tag, u"SHARED");
  EXPECT_EQ(form->Current().ParentKey, u"SHARED");
}

TEST_F(FolderTreeTest, ClickingTheCurrentNodeAgainLoadsNothing) {
  Typical();
  Open();
  ClickAndWait(u"SFLD7");
  Click(u"SFLD7");
  EXPECT_EQ(Ran(Queries::kCountFolderContacts).size(), 1U);
}

TEST_F(FolderTreeTest, DeleteInTheTreeRunsTheDeleteCommand) {
  Open();
  ClickAndWait(u"SHARED");
  form->tvwContacts.UserFocuses(true);
  form->tvwContacts.UserPresses(controls::KeyCode::Delete, 0);
  ASSERT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage().Text, u"The item cannot be deleted.");
  EXPECT_EQ(screen.LastMessage().Title, u"TALVERO Notification Server");
}

TEST_F(FolderTreeTest, OtherKeysInTheTreeDoNothing) {
  Open();
  form->tvwContacts.UserPresses(controls::KeyCode::Enter, 0);
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(FolderTreeTest, ARightClickOnANodeRunsTheContextMenu) {
  Open();
  Click(u"SHARED");
  form->tvwContacts.UserReleases(MouseButton::Right, 0, 10, 10);
  EXPECT_EQ(screen.Menus.size(), 1U);
}

TEST_F(FolderTreeTest, ARightClickOnEmptySpaceRunsNoMenu) {
  Open();
  Click(u"SHARED");
  form->tvwContacts.UserReleases(MouseButton::Right, 0, 10, 10);
  form->tvwContacts.UserReleases(MouseButton::Right, 0, 10, 10);
  EXPECT_EQ(screen.Menus.size(), 1U);
}

TEST_F(FolderTreeTest, ALeftClickConsumesTheClickOnTheNode) {
  Open();
  Click(u"SHARED");
  form->tvwContacts.UserReleases(MouseButton::Left, 0, 10, 10);
  form->tvwContacts.UserReleases(MouseButton::Right, 0, 10, 10);
  EXPECT_TRUE(screen.Menus.empty());
}

TEST_F(FolderTreeTest, ARightClickOnTheCurrentNodeRunsTheMenuTooAndLoadsNothing) {
  Open();
  ClickAndWait(u"SHARED");
  form->tvwContacts.UserReleases(MouseButton::Left, 0, 10, 10);
  Click(u"SHARED");
  form->tvwContacts.UserReleases(MouseButton::Right, 0, 10, 10);
  EXPECT_EQ(screen.Menus.size(), 1U);
  EXPECT_EQ(Ran(Queries::kCountFolderContacts).size(), 1U);
}

}  // namespace
}  // namespace ktrv::tests
