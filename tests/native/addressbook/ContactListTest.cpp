#include "common/Logger.h"
#include "tests/native/addressbook/AddressBookFixture.h"

namespace ktrv::tests {
namespace {

using controls::Image;
using controls::MouseButton;
using controls::SortOrder;
using Alignment = controls::GridColumn::Alignment;
using Texts = std::vector<String>;

constexpr StringView kSortContext =
    u"KTRVAddressBook: Error occurred. Sub:ChangeSortOrder(), Module: frmAddressBook";

struct ContactListTest : AddressBookTest {
  ContactListTest() {
    SharedFolders({{u"7", u"Staff"}});
    RemoteFolders({{u"3", u"Dealers"}});
    Groups({{u"6", u"Drivers", u"0"}});
  }
  /// The window with this list shown for the root.
  void Show(std::vector<Row> rows) {
    Counts(Queries::kCountFolderContacts, static_cast<std::int64_t>(rows.size()));
    Lists(std::move(rows));
    Open();
    ClickAndWait(u"SHARED");
  }
  controls::GridColumn& Grid(StringView key) {
    return form->vsfContacts.ColumnAt(form->vsfContacts.ColIndex(key));
  }
};

// Counting.

TEST_F(ContactListTest, TheRootCountsContactsAndGroupsOutsideFolders) {
  Counts(Queries::kCountFolderContacts, 3);
  Counts(Queries::kCountFolderGroups, 2);
  Open();
  ClickAndWait(u"SHARED");
  EXPECT_EQ(Panel(1), u"5 item(s)");
  EXPECT_EQ(Ran(Queries::kCountFolderContacts).at(0).Values, std::vector<Variant>{std::int64_t{0}});
  EXPECT_EQ(Ran(Queries::kCountFolderGroups).at(0).Values, std::vector<Variant>{std::int64_t{0}});
}

TEST_F(ContactListTest, ASharedFolderCountsItsContactsAndGroups) {
  Counts(Queries::kCountFolderContacts, 1);
  Counts(Queries::kCountFolderGroups, 3);
  Open();
  ClickAndWait(u"SFLD7");
  EXPECT_EQ(Panel(1), u"4 item(s)");
  EXPECT_EQ(Ran(Queries::kCountFolderContacts).at(0).Values, std::vector<Variant>{std::int64_t{7}});
  EXPECT_EQ(Ran(Queries::kCountFolderGroups).at(0).Values, std::vector<Variant>{std::int64_t{7}});
}

TEST_F(ContactListTest, ARemoteFolderCountsItsRemoteContacts) {
  Counts(Queries::kCountRemoteContacts, 9);
  Open();
  ClickAndWait(u"RFLD3");
  EXPECT_EQ(Panel(1), u"9 item(s)");
  EXPECT_EQ(Ran(Queries::kCountRemoteContacts).at(0).Values, std::vector<Variant>{std::int64_t{3}});
  EXPECT_TRUE(Ran(Queries::kCountFolderContacts).empty());
}

TEST_F(ContactListTest, AGroupCountsItsMemberships) {
  Counts(Queries::kCountGroupMembers, 2);
  Open();
  ClickAndWait(u"SHGR6");
  EXPECT_EQ(Panel(1), u"2 item(s)");
  EXPECT_EQ(Ran(Queries::kCountGroupMembers).at(0).Values, std::vector<Variant>{std::int64_t{6}});
}

TEST_F(ContactListTest, ACountWithoutARowIsZero) {
  driver.Answer(Queries::kCountFolderContacts, {{u"TOTALRECORDS"}}, {});
  Counts(Queries::kCountFolderGroups, 2);
  Open();
  ClickAndWait(u"SHARED");
  EXPECT_EQ(Panel(1), u"2 item(s)");
}

TEST_F(ContactListTest, TheEmptyKeyIsNeitherCountedNorQueried) {
  Open();
  EXPECT_EQ(Panel(1), u"0 item(s)");
  EXPECT_EQ(form->StatusBar1.PanelCount(), 3);
  EXPECT_EQ(form->StatusBar1.PanelAt(3).Width, 3000);
  EXPECT_EQ(form->vsfContacts.Rows(), 2);
  EXPECT_TRUE(Ran(u"COUNT(1)").empty());
  EXPECT_EQ(Log(), u"");
}

TEST_F(ContactListTest, TheCommandsAreMadeOnTheWindowsConnectionWhenItLoads) {
  Open();
  EXPECT_TRUE(form->List().CanCount());
  EXPECT_EQ(form->Place().Database.Connection->State(), database::ObjectState::Open);
}

// Queries and dialects.

TEST_F(ContactListTest, TheSqlWordChoosesTheSqlTexts) {
  Open();
  ClickAndWait(u"SHARED");
  ClickAndWait(u"SFLD7");
  ClickAndWait(u"SHGR6");
  const auto ran = Ran(u"AS CONTACTTYPE");
  ASSERT_EQ(ran.size(), 3U);
  EXPECT_EQ(ran[0].Text, Queries::RootItems(data::Dialect::Sql));
  EXPECT_EQ(ran[1].Text, Queries::FolderItems(data::Dialect::Sql, u"7"));
  EXPECT_EQ(ran[2].Text, Queries::GroupItems(data::Dialect::Sql, u"6"));
}

TEST_F(ContactListTest, TheOracleWordChoosesTheOracleTexts) {
  session.DbType = u"ORACLE";
  Open();
  ClickAndWait(u"SHARED");
  ClickAndWait(u"SFLD7");
  ClickAndWait(u"SHGR6");
  const auto ran = Ran(u"AS CONTACTTYPE");
  ASSERT_EQ(ran.size(), 3U);
  EXPECT_EQ(ran[0].Text, Queries::RootItems(data::Dialect::Oracle));
  EXPECT_EQ(ran[1].Text, Queries::FolderItems(data::Dialect::Oracle, u"7"));
  EXPECT_EQ(ran[2].Text, Queries::GroupItems(data::Dialect::Oracle, u"6"));
}

struct OtherWordTest : ContactListTest, testing::WithParamInterface<const char16_t*> {};

TEST_P(OtherWordTest, LeavesTheTextsEmptySoThatTheOpenFails) {
  session.DbType = GetParam();
  Open();
  for (const StringView key : {u"SHARED", u"SFLD7", u"SHGR6"}) {
    screen.Log.clear();
    Click(key);
    EXPECT_EQ(Panel(1), u"Contacts could not be loaded.");
    EXPECT_EQ(screen.Log.back(), "default");
    EXPECT_FALSE(form->ProgressBar1.Visible());
    EXPECT_EQ(form->StatusBar1.PanelCount(), 2);
    EXPECT_EQ(form->vsfContacts.Rows(), 2);
  }
  EXPECT_EQ(ErrorsLogged(kLoadContext), 3);
  EXPECT_NE(Log().find(u"Error Number      : -2147217908"), String::npos);
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_TRUE(form->IsVisible());
}

TEST_P(OtherWordTest, StillListsRemoteFolders) {
  session.DbType = GetParam();
  Lists({Item(u"D1", u"Dealer", u"3")});
  Open();
  ClickAndWait(u"RFLD3");
  EXPECT_EQ(Column(u"NAME"), (Texts{u"Dealer"}));
  EXPECT_EQ(Ran(u"AS CONTACTTYPE").at(0).Text, Queries::RemoteFolderItems(u"3"));
}

INSTANTIATE_TEST_SUITE_P(Words, OtherWordTest,
                         testing::Values(u"MYSQL", u"Oracle", u"sql", u"", u" SQL"));

// The grid.

TEST_F(ContactListTest, TheGridIsLaidOutByKey) {
  Show({Item(u"1", u"Anna")});
  struct Expected {
    const char16_t* Key;
    const char16_t* Heading;
    int Width;
    Alignment Align;
  };
  const Expected shown[] = {{u"NAME", u"Name", 3000, Alignment::Left},
                            {u"MOBILENO", u"Mobile No", 2500, Alignment::Left},
                            {u"EMAIL", u"Email", 25000, Alignment::Left},
                            {u"ADDRESS", u"Address", 3000, Alignment::Left},
                            {u"ORGANISATION", u"Organisation", 3000, Alignment::Left},
                            {u"CONTACTTYPE", u"", 300, Alignment::Center}};
  for (const Expected& each : shown) {
    EXPECT_EQ(Grid(each.Key).Heading, each.Heading);
    EXPECT_EQ(Grid(each.Key).Width, each.Width);
    EXPECT_EQ(Grid(each.Key).Align, each.Align);
    EXPECT_FALSE(Grid(each.Key).Hidden);
  }
  for (const StringView key : {u"FIXED", u"ID", u"SHARED", u"FOLDERID"}) {
    EXPECT_TRUE(Grid(key).Hidden);
  }
}

TEST_F(ContactListTest, TheColumnsStandInTheOrderOfTheQuery) {
  Show({Item(u"1", u"Anna")});
  Texts keys;
  for (int column = 0; column < form->vsfContacts.Cols(); ++column) {
    keys.push_back(form->vsfContacts.ColumnAt(column).Key);
  }
  EXPECT_EQ(keys, (Texts{u"FIXED", u"ID", u"NAME", u"SHARED", u"MOBILENO", u"EMAIL", u"ADDRESS",
                         u"ORGANISATION", u"FOLDERID", u"CONTACTTYPE"}));
}

TEST_F(ContactListTest, TheCellsAreTheRowsValues) {
  Show({Item(u"12", u"Anna")});
  EXPECT_EQ(Column(u"ID"), Texts{u"12"});
  EXPECT_EQ(Column(u"NAME"), Texts{u"Anna"});
  EXPECT_EQ(Column(u"SHARED"), Texts{u"1"});
  EXPECT_EQ(Column(u"MOBILENO"), Texts{u"91 98200"});
  EXPECT_EQ(Column(u"EMAIL"), Texts{u"a@b.c"});
  EXPECT_EQ(Column(u"ADDRESS"), Texts{u"Street 1"});
  EXPECT_EQ(Column(u"ORGANISATION"), Texts{u"Acme"});
  EXPECT_EQ(Column(u"FOLDERID"), Texts{u"0"});
  EXPECT_EQ(Column(u"CONTACTTYPE"), Texts{u"1"});
}

TEST_F(ContactListTest, ATypeIsShownAsItsPicture) {
  Show({Item(u"1", u"Anna")});
  const auto& picture = Grid(u"CONTACTTYPE").Picture;
  EXPECT_EQ(picture(u"1"), std::pair(Image::Contact, String(u"Contact")));
  EXPECT_EQ(picture(u"2"), std::pair(Image::Group, String(u"Group")));
  EXPECT_EQ(picture(u"3"), std::pair(Image::RemoteContact, String(u"Remote contact")));
}

TEST_F(ContactListTest, TheUserMaySortAndMoveColumns) {
  Show({Item(u"1", u"Anna")});
  EXPECT_TRUE(form->vsfContacts.UserCanSort);
  EXPECT_TRUE(form->vsfContacts.UserCanMoveColumns);
}

TEST_F(ContactListTest, AnEmptyFolderShowsItsHeadingsAndNoProgressBar) {
  Open();
  Click(u"SFLD7");
  EXPECT_FALSE(form->ProgressBar1.Visible());
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Panel(1), u"0 item(s)");
  EXPECT_EQ(form->vsfContacts.Rows(), 1);
  EXPECT_EQ(Grid(u"NAME").Heading, u"Name");
}

TEST_F(ContactListTest, RowsStandInTheOrderOfTheResult) {
  Show({Item(u"1", u"Zoe"), Item(u"2", u"Anna")});
  EXPECT_EQ(Column(u"NAME"), (Texts{u"Zoe", u"Anna"}));
}

TEST_F(ContactListTest, NullsAreEmptyTexts) {
  Show({{u"1", std::nullopt, u"1", std::nullopt, std::nullopt, std::nullopt, std::nullopt, u"0",
         u"1"}});
  EXPECT_EQ(Column(u"NAME"), Texts{u""});
}

// Sorting.

TEST_F(ContactListTest, AfterALoadTheIndicatorStandsOnTheName) {
  Show({Item(u"1", u"Anna")});
  EXPECT_EQ(Grid(u"NAME").HeadingPicture, Image::SortAscending);
  EXPECT_EQ(form->List().SortColumn(), u"NAME");
}

TEST_F(ContactListTest, AClickOnAHeadingSortsAndMovesTheIndicator) {
  Show({Item(u"1", u"Zoe"), Item(u"2", u"Anna")});
  const int id = form->vsfContacts.ColIndex(u"ID");
  form->vsfContacts.UserClicksHeading(id);
  form->vsfContacts.UserClicksHeading(id);
  EXPECT_EQ(Column(u"ID"), (Texts{u"2", u"1"}));
  EXPECT_EQ(Grid(u"ID").HeadingPicture, Image::SortDescending);
  EXPECT_EQ(Grid(u"NAME").HeadingPicture, Image::None);
  EXPECT_EQ(form->List().SortColumn(), u"ID");
}

TEST_F(ContactListTest, ChangeSortOrderSortsByTheKey) {
  Show({Item(u"1", u"Zoe"), Item(u"2", u"Anna")});
  form->ChangeSortOrder(u"NAME", SortOrder::Ascending);
  EXPECT_EQ(Column(u"NAME"), (Texts{u"Anna", u"Zoe"}));
  form->ChangeSortOrder(u"NAME", SortOrder::Descending);
  EXPECT_EQ(Column(u"NAME"), (Texts{u"Zoe", u"Anna"}));
}

TEST_F(ContactListTest, TheDummyKeyDoesNothingInAnyCase) {
  Show({Item(u"1", u"Zoe"), Item(u"2", u"Anna")});
  form->ChangeSortOrder(u"dummy", SortOrder::Ascending);
  EXPECT_EQ(Column(u"NAME"), (Texts{u"Zoe", u"Anna"}));
  EXPECT_EQ(form->List().SortColumn(), u"NAME");
  EXPECT_EQ(Log(), u"");
}

TEST_F(ContactListTest, AnUnknownKeyIsLogged) {
  Show({Item(u"1", u"Zoe")});
  form->ChangeSortOrder(u"NOWHERE", SortOrder::Ascending);
  EXPECT_EQ(ErrorsLogged(kSortContext), 1);
  EXPECT_EQ(form->List().SortColumn(), u"NAME");
}

TEST_F(ContactListTest, ANewLoadSortsByNameAgain) {
  Show({Item(u"1", u"Zoe"), Item(u"2", u"Anna")});
  form->ChangeSortOrder(u"EMAIL", SortOrder::Descending);
  ClickAndWait(u"SFLD7");
  EXPECT_EQ(form->List().SortColumn(), u"NAME");
  EXPECT_EQ(Grid(u"NAME").HeadingPicture, Image::SortAscending);
  EXPECT_EQ(Grid(u"EMAIL").HeadingPicture, Image::None);
}

// Find as you type.

TEST_F(ContactListTest, TypingSelectsTheFirstNameThatBeginsSo) {
  Show({Item(u"1", u"Anna"), Item(u"2", u"Bert"), Item(u"3", u"Berta")});
  form->txtFind.UserTypes(u" be");
  EXPECT_EQ(form->vsfContacts.Row(), 2);
  EXPECT_EQ(form->vsfContacts.SelectedRows(), std::vector<int>{2});
  form->txtFind.UserTypes(u"rta");
  EXPECT_EQ(form->vsfContacts.Row(), 3);
}

TEST_F(ContactListTest, WhenNoNameMatchesTheSelectionStays) {
  Show({Item(u"1", u"Anna"), Item(u"2", u"Bert")});
  form->txtFind.UserTypes(u"b");
  form->txtFind.UserTypes(u"x");
  EXPECT_EQ(form->vsfContacts.Row(), 2);
  EXPECT_EQ(form->vsfContacts.Rows(), 3);
}

TEST_F(ContactListTest, TypingOnASingleRowDoesNothing) {
  Show({Item(u"1", u"Anna")});
  form->txtFind.UserTypes(u"a");
  EXPECT_EQ(form->vsfContacts.Row(), 0);
}

TEST_F(ContactListTest, TypingOnAnEmptyGridDoesNothing) {
  Show({});
  form->txtFind.UserTypes(u"a");
  EXPECT_EQ(form->vsfContacts.Row(), 0);
  EXPECT_EQ(Log(), u"");
}

TEST_F(ContactListTest, TypingBeforeAnyListDoesNothing) {
  Open();
  form->txtFind.UserTypes(u"a");
  EXPECT_EQ(Log(), u"");
}

TEST_F(ContactListTest, TheFindIsSortedRowsOrder) {
  Show({Item(u"1", u"Berta"), Item(u"2", u"Bert")});
  form->ChangeSortOrder(u"NAME", SortOrder::Ascending);
  form->txtFind.UserTypes(u"b");
  EXPECT_EQ(form->vsfContacts.Text(form->vsfContacts.Row(), form->vsfContacts.ColIndex(u"NAME")),
            u"Bert");
}

// Keys and mouse.

TEST_F(ContactListTest, EnterAndDeleteRunTheirCommands) {
  Show({Item(u"D1", u"Acme", u"3")});
  form->vsfContacts.SetRow(1);
  form->vsfContacts.UserPresses(controls::KeyCode::Enter, 0);
  ASSERT_EQ(screen.Messages.size(), 1U);
  EXPECT_TRUE(screen.LastMessage().Text.starts_with(u"This is a Shared Remote Contact."));
  screen.Answer(MessageAnswer::No);
  form->vsfContacts.UserPresses(controls::KeyCode::Delete, 0);
  ASSERT_EQ(screen.Messages.size(), 2U);
  EXPECT_TRUE(screen.LastMessage().Text.starts_with(u"Are you sure"));
  form->vsfContacts.UserPresses(controls::KeyCode::Escape, 0);
  EXPECT_EQ(screen.Messages.size(), 2U);
}

TEST_F(ContactListTest, ADoubleClickIsAsEnter) {
  Show({Item(u"D1", u"Acme", u"3")});
  form->vsfContacts.SetRow(1);
  form->vsfContacts.UserDoubleClicks();
  EXPECT_EQ(screen.Messages.size(), 1U);
}

TEST_F(ContactListTest, EnterAndADoubleClickOnAnEmptyGridDoNothing) {
  Show({});
  form->vsfContacts.UserPresses(controls::KeyCode::Enter, 0);
  form->vsfContacts.UserDoubleClicks();
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(ContactListTest, EnterAndADoubleClickOnAResetGridDoNothing) {
  Open();
  form->vsfContacts.UserPresses(controls::KeyCode::Enter, 0);
  form->vsfContacts.UserDoubleClicks();
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(ContactListTest, ARightClickMakesTheRowUnderThePointerCurrentWhenOneIsSelected) {
  Show({Item(u"1", u"Anna"), Item(u"2", u"Bert")});
  form->vsfContacts.SetRow(1);
  form->vsfContacts.UserReleases(MouseButton::Left, 0, 2);
  EXPECT_EQ(form->vsfContacts.Row(), 1);
  form->vsfContacts.UserReleases(MouseButton::Right, 0, 2);
  EXPECT_EQ(form->vsfContacts.Row(), 2);
  EXPECT_TRUE(screen.Menus.empty());
}

TEST_F(ContactListTest, ARightClickKeepsASelectionOfSeveralRows) {
  Show({Item(u"1", u"Anna"), Item(u"2", u"Bert"), Item(u"3", u"Carl")});
  form->vsfContacts.SelectRows(1, 2);
  form->vsfContacts.UserReleases(MouseButton::Right, 0, 3);
  EXPECT_EQ(form->vsfContacts.SelectedRows(), (std::vector<int>{1, 2}));
}

TEST_F(ContactListTest, ARightClickBesideTheRowsKeepsTheCurrentOne) {
  Show({Item(u"1", u"Anna")});
  form->vsfContacts.SetRow(1);
  form->vsfContacts.UserReleases(MouseButton::Right, 0, -1);
  EXPECT_EQ(form->vsfContacts.Row(), 1);
}

// Toolbar.

TEST_F(ContactListTest, TheToolbarHasItsFourButtons) {
  Texts keys;
  for (const auto& button : Open().tlbMain.Buttons()) keys.push_back(button.Key);
  EXPECT_EQ(keys, (Texts{u"NEW", u"PROPERTIES", u"DELETE", u"REFRESH"}));
  EXPECT_EQ(form->tlbMain.BandBox(), &form->txtFind);
  EXPECT_EQ(form->tlbMain.BandLabel()->Caption(), u"&Find:");
}

TEST_F(ContactListTest, RefreshLoadsTheListAgain) {
  Show({Item(u"1", u"Anna")});
  Lists({Item(u"1", u"Anna"), Item(u"2", u"Bert")});
  form->tlbMain.UserClicks(u"REFRESH");
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Column(u"NAME"), (Texts{u"Anna", u"Bert"}));
}

TEST_F(ContactListTest, TheNewButtonsArrowOffersAContactOrAGroup) {
  Open();
  screen.Choose(u"mnuNewGroup");
  String caption;
  screen.PlayModal([&](controls::Form& editor) {
    caption = editor.Caption();
    editor.UserCloses();
  });
  form->tlbMain.UserDropsDown(u"NEW", 100, 500);
  ASSERT_EQ(screen.Menus.size(), 1U);
  EXPECT_EQ(screen.Menus[0].Names, (Texts{u"mnuNewContact", u"mnuNewGroup"}));
  EXPECT_EQ(screen.Menus[0].At->X, 100);
  EXPECT_EQ(caption, u"New Group");
}

}  // namespace
}  // namespace ktrv::tests
