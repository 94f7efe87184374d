#include "tests/native/addressbook/AddressBookFixture.h"

namespace ktrv::tests {
namespace {

using Texts = std::vector<String>;

constexpr StringView kQuestion = u"Are you sure you want to delete the selected item(s)?";
constexpr std::int32_t kYesNoNoFirst = 4 + 32 + 256;  // Yes and No, question, the second is default
constexpr std::int32_t kWarning = 48;
constexpr std::int32_t kCritical = 16;

/// The tree has the focus.
struct NodeDeletionTest : AddressBookTest {
  NodeDeletionTest() {
    SharedFolders({{u"1", u"Friends"}, {u"7", u"Staff"}});
    RemoteFolders({{u"3", u"Dealers"}});
    Groups({{u"5", u"Everyone", u"0"}, {u"6", u"Drivers", u"7"}});
    driver.Changes(u"DELETE", 1);
  }
  void Choose(StringView key) {
    Open();
    ClickAndWait(key);
    form->tvwContacts.UserFocuses(true);
  }
  void Delete() { form->tvwContacts.UserPresses(controls::KeyCode::Delete, 0); }
  Texts Deleted() const {
    Texts texts;
    for (const auto& each : Ran(u"DELETE")) texts.push_back(each.Text);
    return texts;
  }
  void Answers(std::initializer_list<std::int16_t> buttons) {
    for (const std::int16_t button : buttons) screen.Answer(button);
  }
};

using namespace MessageAnswer;

TEST_F(NodeDeletionTest, TheRootCannotBeDeleted) {
  Choose(u"SHARED");
  Delete();
  ASSERT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage().Text, u"The item cannot be deleted.");
  EXPECT_EQ(screen.LastMessage().Style, kWarning);
  EXPECT_EQ(screen.LastMessage().Title, u"TALVERO Notification Server");
  EXPECT_TRUE(Deleted().empty());
}

TEST_F(NodeDeletionTest, AGeneralUserIsToldOfTheRootToo) {
  session.IsAdmin = UserType::GeneralUser;
  Choose(u"SHARED");
  Delete();
  EXPECT_EQ(screen.LastMessage().Text, u"The item cannot be deleted.");
}

TEST_F(NodeDeletionTest, BeforeANodeIsChosenNothingHappens) {
  Open();
  form->tvwContacts.UserFocuses(true);
  Delete();
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_TRUE(Deleted().empty());
}

TEST_F(NodeDeletionTest, AFolderWithGroupsIsRefused) {
  Choose(u"SFLD7");
  Delete();
  ASSERT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage().Text,
            u"Selected folder contains group(s) under it. Remove all group(s) first to delete "
            u"selected folder.");
  EXPECT_EQ(screen.LastMessage().Style, kCritical);
  EXPECT_TRUE(Deleted().empty());
}

TEST_F(NodeDeletionTest, AFolderWithAGroupMadeElsewhereIsNotDeleted) {
  Choose(u"SFLD1");
  Groups({{u"5", u"Everyone", u"0"}, {u"6", u"Drivers", u"7"}, {u"8", u"Theirs", u"1"}});
  GroupsInFolders({{u"8"}});
  Answers({Yes, Ok});
  Delete();
  ASSERT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage().Text,
            u"Selected folder contains group(s) under it. Remove all group(s) first to delete "
            u"selected folder.");
  EXPECT_EQ(screen.LastMessage().Style, kCritical);
  EXPECT_TRUE(Deleted().empty());
  // The tree that did not show it does now, and the list is still the folder's.
  ASSERT_NE(form->tvwContacts.Find(u"SHGR8"), nullptr);
  EXPECT_EQ(Node(u"SHGR8").Parent, &Node(u"SFLD1"));
  EXPECT_EQ(form->Current().Key, u"SFLD1");
}

TEST_F(NodeDeletionTest, AFolderOfATreeThatEndedEarlyKeepsItsGroups) {
  driver.Fail(Queries::kGroups, Error(ErrorNumber::DriverFailure, u"locked"));
  GroupsInFolders({{u"6"}});
  Choose(u"SFLD7");
  Groups({{u"6", u"Drivers", u"7"}});
  Answers({Yes, Ok});
  Delete();
  EXPECT_EQ(screen.Messages.size(), 1U);
  EXPECT_TRUE(Deleted().empty());
  EXPECT_NE(form->tvwContacts.Find(u"SHGR6"), nullptr);
}

TEST_F(NodeDeletionTest, AGroupMadeWhileItIsAskedKeepsItsFolder) {
  Choose(u"SFLD1");
  screen.WhileAsked([] {});
  screen.WhileAsked([&] { GroupsInFolders({{u"8"}}); });
  Answers({Yes, Ok});
  Delete();
  ASSERT_EQ(screen.Messages.size(), 3U);
  EXPECT_EQ(screen.LastMessage().Style, kCritical);
  EXPECT_TRUE(Deleted().empty());
}

TEST_F(NodeDeletionTest, AFolderWhoseGroupsCannotBeCountedIsNotDeleted) {
  Choose(u"SFLD1");
  driver.Fail(kGroupsInFolder, Error(ErrorNumber::DriverFailure, u"locked"));
  Answers({Yes, Ok});
  Delete();
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_TRUE(Deleted().empty());
  EXPECT_EQ(ErrorsLogged(kDeleteContext), 1);
  GroupsInFolders({});
  Delete();  // with the answers from before
  EXPECT_EQ(Deleted().size(), 2U);
}

TEST_F(NodeDeletionTest, AFolderCanBeDeletedOnceItsGroupsAreGone) {
  Choose(u"SHGR6");
  Answers({Yes});
  Delete();
  ASSERT_TRUE(Complete());
  Click(u"SFLD7");
  ASSERT_TRUE(Complete());
  Answers({Yes, Ok});
  Delete();
  EXPECT_EQ(form->tvwContacts.Find(u"SFLD7"), nullptr);
}

TEST_F(NodeDeletionTest, TheQuestionOffersNoFirst) {
  Choose(u"SHGR5");
  Answers({No});
  Delete();
  ASSERT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage().Text, kQuestion);
  EXPECT_EQ(screen.LastMessage().Style, kYesNoNoFirst);
  EXPECT_EQ(screen.LastMessage().Title, u"TALVERO Notification Server");
}

TEST_F(NodeDeletionTest, UnlessYesNothingIsDeleted) {
  for (const std::int16_t answer : {No, Cancel, Ok, std::int16_t{0}}) {
    Choose(u"SHGR5");
    Answers({answer});
    Delete();
  }
  EXPECT_TRUE(Deleted().empty());
  EXPECT_NE(form->tvwContacts.Find(u"SHGR5"), nullptr);
}

TEST_F(NodeDeletionTest, AGroupGoesWithItsMembershipsInThisOrder) {
  Choose(u"SHGR5");
  Answers({Yes});
  Delete();
  EXPECT_EQ(Deleted(), (Texts{u"DELETE FROM SMS_ABGROUPS WHERE ID = 5",
                              u"DELETE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 5"}));
  EXPECT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(form->tvwContacts.Find(u"SHGR5"), nullptr);
}

TEST_F(NodeDeletionTest, ASharedFolderAsksTwiceAndGoesWithItsContacts) {
  Choose(u"SFLD1");
  Answers({Yes, Ok});
  Delete();
  ASSERT_EQ(screen.Messages.size(), 2U);
  EXPECT_EQ(screen.Messages[0].Text, kQuestion);
  EXPECT_EQ(screen.Messages[1].Text,
            u"Are you sure you want to completely delete the  selected folder and all its contents "
            u"?");
  EXPECT_EQ(screen.Messages[1].Style & 0xF, 1);  // OK and Cancel
  EXPECT_EQ(screen.Messages[1].Title, u"TALVERO Notification Server");
  EXPECT_EQ(Deleted(), (Texts{u"DELETE FROM SMS_ABCONTACTS WHERE FOLDER_ID = 1",
                              u"DELETE FROM SMS_ABFOLDERS WHERE ID = 1"}));
  EXPECT_EQ(form->tvwContacts.Find(u"SFLD1"), nullptr);
}

TEST_F(NodeDeletionTest, ASharedFolderStaysWhenEitherQuestionIsDenied) {
  Choose(u"SFLD1");
  Answers({No});
  Delete();
  EXPECT_EQ(screen.Messages.size(), 1U);
  Answers({Yes, Cancel});
  Delete();
  EXPECT_EQ(screen.Messages.size(), 3U);
  EXPECT_TRUE(Deleted().empty());
  EXPECT_NE(form->tvwContacts.Find(u"SFLD1"), nullptr);
}

TEST_F(NodeDeletionTest, ARemoteFolderAsksTwiceAndLosesItsRowOnly) {
  Choose(u"RFLD3");
  Answers({Yes, Ok});
  Delete();
  ASSERT_EQ(screen.Messages.size(), 2U);
  EXPECT_EQ(screen.Messages[1].Text,
            u"Are you sure you want to completely delete the selected Shared Remote folder ?");
  EXPECT_EQ(screen.Messages[1].Style & 0xF, 1);
  EXPECT_EQ(Deleted(), (Texts{u"DELETE FROM SMS_ABFOLDERS WHERE ID = 3"}));
}

TEST_F(NodeDeletionTest, ARemoteFolderStaysWhenTheSecondQuestionIsDenied) {
  Choose(u"RFLD3");
  Answers({Yes, Cancel});
  Delete();
  EXPECT_TRUE(Deleted().empty());
}

TEST_F(NodeDeletionTest, AGeneralUserMayDeleteAFolderOrAGroup) {
  session.IsAdmin = UserType::GeneralUser;
  Choose(u"SHGR5");
  Answers({Yes});
  Delete();
  EXPECT_EQ(Deleted().size(), 2U);
}

// Afterwards.

TEST_F(NodeDeletionTest, TheNodeThatTheTreeThenSelectsIsCurrentAndListed) {
  Choose(u"SFLD1");
  Answers({Yes, Ok});
  const std::size_t counted = Ran(Queries::kCountFolderContacts).size();
  Delete();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(form->Current().Key, u"SFLD7");
  EXPECT_EQ(form->tvwContacts.SelectedNode(), &Node(u"SFLD7"));
  EXPECT_EQ(Ran(Queries::kCountFolderContacts).size(), counted + 1);
  EXPECT_TRUE(Ran(u"WHERE  FOLDER_ID=7").size() == 1);
}

TEST_F(NodeDeletionTest, TheTreeIsNotBuiltAnew) {
  Choose(u"SHGR5");
  Answers({Yes});
  Delete();
  EXPECT_EQ(Ran(Queries::kGroups).size(), 1U);
}

TEST_F(NodeDeletionTest, NoMenuFollowsOnEmptySpace) {
  Choose(u"SHGR5");
  form->tvwContacts.UserReleases(controls::MouseButton::Left, 0, 10, 10);
  Answers({Yes});
  Delete();
  form->tvwContacts.UserReleases(controls::MouseButton::Right, 0, 10, 5000);
  EXPECT_TRUE(screen.Menus.empty());
}

// Failures.

TEST_F(NodeDeletionTest, AFailingFirstStatementLeavesAll) {
  driver.Fail(u"DELETE FROM SMS_ABGROUPS ", Error(ErrorNumber::DriverFailure, u"locked"));
  Choose(u"SHGR5");
  Answers({Yes});
  Delete();
  EXPECT_EQ(Deleted().size(), 1U);
  EXPECT_EQ(ErrorsLogged(kDeleteContext), 1);
  EXPECT_NE(form->tvwContacts.Find(u"SHGR5"), nullptr);
  EXPECT_TRUE(form->IsVisible());
}

TEST_F(NodeDeletionTest, AFailingSecondStatementLeavesTheFirstDoneAndCanBeTriedAgain) {
  driver.Fail(u"DELETE FROM SMS_ABGROUPMAPS", Error(ErrorNumber::DriverFailure, u"locked"));
  Choose(u"SHGR5");
  Answers({Yes});
  Delete();
  EXPECT_EQ(Deleted().size(), 2U);
  EXPECT_TRUE(Ran(u"ROLLBACK").empty());
  EXPECT_EQ(ErrorsLogged(kDeleteContext), 1);
  driver.Changes(u"DELETE FROM SMS_ABGROUPMAPS", 1);
  Answers({Yes});
  Delete();
  EXPECT_EQ(form->tvwContacts.Find(u"SHGR5"), nullptr);
}

TEST_F(NodeDeletionTest, AClosedConnectionIsOpened) {
  Choose(u"SHGR5");
  form->Place().Database.Close();
  Answers({Yes});
  Delete();
  EXPECT_EQ(Deleted().size(), 2U);
  EXPECT_EQ(Log(), u"");
}

TEST_F(NodeDeletionTest, AfterALinkDroppedTheNextDeletionUsesANewOne) {
  Choose(u"SHGR5");
  driver.Fail(u"DELETE", Error(ErrorNumber::DriverFailure, u"link failure"));
  Answers({Yes});
  Delete();
  const std::size_t opened = driver.Opened().size();
  driver.Changes(u"DELETE", 1);
  Answers({Yes});
  Delete();
  EXPECT_GT(driver.Opened().size(), opened);
  EXPECT_EQ(form->tvwContacts.Find(u"SHGR5"), nullptr);
}

// What happens meanwhile.

TEST_F(NodeDeletionTest, AnItemThatIsGoneAlreadyIsDeletedAllTheSame) {
  driver.Changes(u"DELETE", 0);
  Choose(u"SHGR5");
  Answers({Yes});
  Delete();
  EXPECT_EQ(form->tvwContacts.Find(u"SHGR5"), nullptr);
  EXPECT_EQ(Log(), u"");
}

TEST_F(NodeDeletionTest, ANodeThatARebuildDidNotFindAgainIsToldOf) {
  Choose(u"SHGR5");
  Groups({});
  form->LoadTreeView();
  Delete();
  ASSERT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage().Text,
            u"The selected folder or group does not exist any more. Please select another one.");
  EXPECT_TRUE(Deleted().empty());
}

TEST_F(NodeDeletionTest, ANodeThatIsNotShownAsSelectedIsNotDeleted) {
  Choose(u"SHGR6");
  form->LoadTreeView();  // which leaves its folder collapsed
  ASSERT_EQ(form->tvwContacts.SelectedNode(), nullptr);
  Answers({Yes});
  Delete();
  form->ContactProperties();
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_TRUE(Deleted().empty());
  EXPECT_NE(form->tvwContacts.Find(u"SHGR6"), nullptr);
}

TEST_F(NodeDeletionTest, TheNodeThatIsShownAsSelectedIsMeant) {
  Choose(u"SHGR5");
  form->tvwContacts.Select(&Node(u"SFLD1"));  // the list stays
  Answers({Yes, Ok});
  Delete();
  EXPECT_EQ(Deleted(), (Texts{u"DELETE FROM SMS_ABCONTACTS WHERE FOLDER_ID = 1",
                              u"DELETE FROM SMS_ABFOLDERS WHERE ID = 1"}));
  form->tvwContacts.Select(&Node(u"SHARED"));
  Delete();
  EXPECT_EQ(screen.LastMessage().Text, u"The item cannot be deleted.");
}

TEST_F(NodeDeletionTest, RowsOfADeletedNodeDoNotStayListed) {
  Counts(Queries::kCountGroupMembers, 1);
  Lists({Item(u"1", u"Anna")});
  Choose(u"SHGR6");
  ASSERT_EQ(Column(u"NAME"), (Texts{u"Anna"}));
  screen.WhileAsked([&] { form->LoadTreeView(); });  // after it no node is selected
  Counts(Queries::kCountGroupMembers, 0);
  Lists({});
  Answers({Yes});
  Delete();
  ASSERT_EQ(Deleted().size(), 2U);
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Column(u"NAME"), Texts{});
}

TEST_F(NodeDeletionTest, ASecondDeleteWhileTheQuestionIsOpenDoesNothing) {
  Choose(u"SHGR5");
  screen.WhileAsked([&] {
    Delete();
    form->ContactProperties();
    form->ContactNew(u"GR");
  });
  Answers({Yes});
  Delete();
  EXPECT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(Deleted().size(), 2U);
}

TEST_F(NodeDeletionTest, WhatWasCurrentWhenItWasAskedIsDeleted) {
  Choose(u"SHGR5");
  screen.WhileAsked([&] { Click(u"SHGR6"); });
  Answers({Yes});
  Delete();
  EXPECT_EQ(Deleted().front(), u"DELETE FROM SMS_ABGROUPS WHERE ID = 5");
}

TEST_F(NodeDeletionTest, AWindowThatIsUnloadedMeanwhileDeletesNothingAndKeepsItsPeersSoLong) {
  Choose(u"SHGR5");
  bool goneMeanwhile = false;
  const auto gone = [&] {
    return std::find(screen.Log.begin(), screen.Log.end(), "gone") != screen.Log.end();
  };
  screen.WhileAsked([&] {
    form->Unload();
    screen.Pump();  // the box's own message loop
    goneMeanwhile = gone();
  });
  Answers({Yes});
  Delete();
  EXPECT_FALSE(goneMeanwhile);
  EXPECT_TRUE(Deleted().empty());
  screen.Pump();
  EXPECT_TRUE(gone());
}

}  // namespace
}  // namespace ktrv::tests
