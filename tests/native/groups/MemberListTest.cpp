#include "data/GroupQueries.h"
#include "tests/native/groups/GroupsFixture.h"

namespace ktrv::forms {
namespace {

namespace Queries = data::GroupQueries;

constexpr StringView kLoad =
    u"KTRVAddressBook: Error occurred. Sub:LoadGroupContacts(), Module: frmGroupsNew()";

struct MemberListTest : tests::GroupsTest {
  MemberListTest() {
    Candidates({{u"1", u"Anna", u"98001", u"91", u"1", u"91 98001"},
                {u"2", u"Bert", u" 98002 ", u"", u"1", u"98002"},
                {u" 3 ", u" Cora ", u"", u"", u"1", u""},
                {u"2", u"Team", u"", u"", u"2", u""}});
  }
  void Open() {
    OpenPicker();
    ASSERT_TRUE(Complete());
  }
  std::vector<String> Ids() const { return Column(form->vsfGroupContacts, u"ID"); }
  void Delete(std::vector<int> rows) {
    form->vsfGroupContacts.UserSelects(rows, rows.empty() ? 0 : rows.front());
    form->vsfGroupContacts.UserPresses(controls::KeyCode::Delete, 0);
  }
};

// Loading.

TEST_F(MemberListTest, MembersOfAGroupComeWithTheirCount) {
  Counts(Queries::kCountMembers, 2);
  MembersAre({{u"1", u"Anna", u"", u"", u"1", u""}, {u"4", u"Dora", u"", u"", u"1", u""}});
  HoldFetches();
  OpenToModify(u"5", u"Team");
  EXPECT_TRUE(form->lblLoadingGrp.Visible());
  EXPECT_EQ(form->lblLoadingGrp.Caption(), u"Loading...");
  EXPECT_TRUE(form->PbrGrp.Visible());
  EXPECT_EQ(form->PbrGrp.Max(), 2);
  EXPECT_EQ(MemberCount(), u"2 Member(s)");
  driver.OpenGate.Open();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Ids(), (std::vector<String>{u"1", u"4"}));
  EXPECT_FALSE(form->lblLoadingGrp.Visible());
  EXPECT_FALSE(form->PbrGrp.Visible());
  const auto& grid = form->vsfGroupContacts;
  EXPECT_EQ(grid.Text(0, grid.ColIndex(u"NAME")), u"Name");
  EXPECT_EQ(grid.Text(0, grid.ColIndex(u"MOBILE_DISPLAY")), u"Mobile No.");
}

TEST_F(MemberListTest, CountOfALoadedGroupIncludesMembersThatAreNotListed) {
  Counts(Queries::kCountMembers, 3);  // remote members, which one family does not list, included
  MembersAre({{u"1", u"Anna", u"", u"", u"1", u""}});
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  EXPECT_EQ(MemberCount(), u"3 Member(s)");
}

TEST_F(MemberListTest, CountOfAGroupWithoutMembersIsShown) {
  OpenToModify(u"5", u"Void");
  EXPECT_EQ(MemberCount(), u"0 Member(s)");
}

TEST_F(MemberListTest, CountSaysWhatTheListShowsOnceItWasChanged) {
  Counts(Queries::kCountMembers, 3);
  MembersAre({{u"4", u"Dora", u"", u"", u"1", u""}, {u"5", u"Emil", u"", u"", u"1", u""}});
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  Delete({1});
  EXPECT_EQ(MemberCount(), u"1 Member(s)");
}

TEST_F(MemberListTest, BarMovesToTheNumberOfMembersThatCame) {
  Counts(Queries::kCountMembers, 130);
  MembersAre(Contacts(120));
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  EXPECT_EQ(form->PbrGrp.Max(), 130);
  EXPECT_EQ(form->PbrGrp.Value(), 120);
}

TEST_F(MemberListTest, MembersComeInBlocksOf500) {
  MembersAre(Contacts(1200));
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  EXPECT_EQ(form->Members().Count(), 1200);
  EXPECT_EQ(driver.MostRowsAsked(Queries::Members(data::Dialect::Sql, u"5")), 500U);
}

TEST_F(MemberListTest, FetchIsCancelledBeforeTheMembersAreCountedAnew) {
  HoldFetches();
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(HoldRows(2));  // the source's and the members'
  driver.Fail(Queries::kCountMembers, Error(ErrorNumber::DriverFailure, u"gone"));
  form->LoadGroupContacts();
  EXPECT_TRUE(screen.WaitUntil([&] { return driver.Cancels() > 0; }));
  driver.FetchGate.Open();
  ASSERT_TRUE(tests::WaitForFetches());
}

TEST_F(MemberListTest, GroupIdThatIsNoNumberNeverReachesTheList) {
  OpenToModify(u"5 OR 1=1", u"Team");
  ASSERT_TRUE(Complete());
  EXPECT_EQ(ErrorsLogged(kLoad), 1);
  EXPECT_TRUE(Ran(u"OR 1=1").empty());
  EXPECT_EQ(form->lblLoadingGrp.Caption(), u"The members could not be loaded.");
}

TEST_F(MemberListTest, FailedCountIsLoggedAndTold) {
  driver.Fail(Queries::kCountMembers, Error(ErrorNumber::TableNotFound, u"no table"));
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  EXPECT_EQ(ErrorsLogged(kLoad), 1);
  EXPECT_FALSE(form->Members().IsComplete());
}

TEST_F(MemberListTest, RowsThatTheGridCouldNotTakeStayUnderIt) {
  MembersAre({{u"1", u"Anna", u"", u"", u"1", u""}});
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  HoldFetches();
  auto& grid = form->vsfGroupContacts;
  grid.SelectionChange = [] { throw Error(ErrorNumber::OutOfMemory); };
  form->LoadGroupContacts();
  grid.SelectionChange = nullptr;
  EXPECT_EQ(ErrorsLogged(kLoad), 1);
  EXPECT_EQ(form->lblLoadingGrp.Caption(), u"The members could not be loaded.");
  grid.DataRefresh();
  // What comes late does not turn the failure into a list that may be saved.
  driver.OpenGate.Open();
  ASSERT_TRUE(tests::WaitForFetches());
  screen.Pump();
  EXPECT_FALSE(form->Members().IsComplete());
  EXPECT_EQ(form->Members().Count(), 0);
}

TEST_F(MemberListTest, NothingIsAddedOrRemovedBeforeAllMembersAreThere) {
  MembersAre({{u"1", u"Anna", u"", u"", u"1", u""}});
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  HoldFetches();
  form->LoadGroupContacts();
  EXPECT_FALSE(form->cmdSelect.Enabled());
  EXPECT_FALSE(form->cmdSelectAll.Enabled());
  form->vsfFolderContacts.SetRow(2);
  form->vsfFolderContacts.UserDoubleClicks();
  Delete({1});
  driver.OpenGate.Open();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Ids(), (std::vector<String>{u"1"}));
  EXPECT_TRUE(form->cmdSelect.Enabled());
  EXPECT_TRUE(form->cmdSelectAll.Enabled());
}

// Selecting.

TEST_F(MemberListTest, SelectedRowsGoOverWithAllTheirTextsTrimmed) {
  Open();
  Take({2, 3});
  const auto& grid = form->vsfGroupContacts;
  EXPECT_EQ(Ids(), (std::vector<String>{u"2", u"3"}));
  EXPECT_EQ(Column(grid, u"NAME"), (std::vector<String>{u"Bert", u"Cora"}));
  EXPECT_EQ(Column(grid, u"MOBILENO"), (std::vector<String>{u"98002", u""}));
  EXPECT_EQ(Column(grid, u"COUNTRYCODE"), (std::vector<String>{u"", u""}));
  EXPECT_EQ(Column(grid, u"CONTACTTYPE"), (std::vector<String>{u"1", u"1"}));
  EXPECT_EQ(Column(grid, u"MOBILE_DISPLAY"), (std::vector<String>{u"98002", u""}));
  EXPECT_EQ(grid.Text(1, 0), u"1");
}

TEST_F(MemberListTest, SameRowsTwiceChangeNothingTheSecondTime) {
  Open();
  Take({1, 2});
  Take({1, 2});
  EXPECT_EQ(Ids(), (std::vector<String>{u"1", u"2"}));
  EXPECT_EQ(MemberCount(), u"2 Member(s)");
}

TEST_F(MemberListTest, MemberOfTheGroupIsNotAddedAgain) {
  MembersAre({{u"1", u"Anna", u"", u"", u"1", u""}});
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  Take({1});
  EXPECT_EQ(Ids(), (std::vector<String>{u"1"}));
}

TEST_F(MemberListTest, ContactKeepsAGroupOfTheSameNumberOut) {
  Open();
  Take({2, 4});
  EXPECT_EQ(Column(form->vsfGroupContacts, u"NAME"), (std::vector<String>{u"Bert"}));
}

TEST_F(MemberListTest, WhoIsLeftOutIsNotLeftUnsaid) {
  Open();
  EXPECT_FALSE(form->lblLeftOut.Visible());
  Take({2, 4});
  EXPECT_TRUE(form->lblLeftOut.Visible());
  EXPECT_EQ(form->lblLeftOut.Caption(), u"1 left out, ids already in the list: Team");
}

TEST_F(MemberListTest, AllLeavesNobodyOutUnsaid) {
  Candidates({{u"1", u"Anna", u"", u"", u"1", u""},
              {u"1", u"Tom & Co", u"", u"", u"2", u""},
              {u"2", u"Team", u"", u"", u"2", u""},
              {u"2", u"Bert", u"", u"", u"1", u""}});
  Open();
  form->cmdSelectAll.UserClicks();
  EXPECT_EQ(Column(form->vsfGroupContacts, u"NAME"), (std::vector<String>{u"Anna", u"Team"}));
  // A single "&" would underline what follows it.
  EXPECT_EQ(form->lblLeftOut.Caption(), u"2 left out, ids already in the list: Tom && Co, Bert");
}

TEST_F(MemberListTest, RemoteContactWithAMembersNumberIsNamed) {
  Candidates({{u"8", u"Rita", u"97001", u"", u"3", u"97001"}});
  MembersAre({{u"8", u"Anna", u"", u"", u"1", u""}});
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  Take({1});
  EXPECT_EQ(Column(form->vsfGroupContacts, u"NAME"), (std::vector<String>{u"Anna"}));
  EXPECT_EQ(form->lblLeftOut.Caption(), u"1 left out, ids already in the list: Rita");
}

TEST_F(MemberListTest, WhoIsListedAlreadyIsNotCalledLeftOut) {
  Open();
  Take({1, 2});
  Take({1, 2});
  EXPECT_FALSE(form->lblLeftOut.Visible());
}

TEST_F(MemberListTest, NextChangeForgetsWhoWasLeftOut) {
  Open();
  Take({2, 4});
  Take({1});
  EXPECT_FALSE(form->lblLeftOut.Visible());
  Take({4});
  EXPECT_TRUE(form->lblLeftOut.Visible());
  Delete({1});
  EXPECT_FALSE(form->lblLeftOut.Visible());
  Take({4});
  EXPECT_EQ(Column(form->vsfGroupContacts, u"NAME"), (std::vector<String>{u"Anna", u"Team"}));
  EXPECT_FALSE(form->lblLeftOut.Visible());
}

TEST_F(MemberListTest, OfManyLeftOutTheNumberIsSaidStill) {
  std::vector<Row> rows = Contacts(300);
  for (int id = 1; id <= 300; ++id) {
    rows.push_back({ToDecimal(id), u"Group " + ToDecimal(id), u"", u"", u"2", u""});
  }
  Candidates(std::move(rows));
  Open();
  form->cmdSelectAll.UserClicks();
  EXPECT_EQ(MemberCount(), u"300 Member(s)");
  EXPECT_EQ(form->lblLeftOut.Caption(),
            u"300 left out, ids already in the list: Group 1, Group 2, Group 3, Group 4 and 296 "
            u"more");
}

TEST_F(MemberListTest, DoubleClickTakesTheSelectedRow) {
  Open();
  form->vsfFolderContacts.SetRow(1);
  form->vsfFolderContacts.UserDoubleClicks();
  EXPECT_EQ(Ids(), (std::vector<String>{u"1"}));
}

TEST_F(MemberListTest, AllTakesEveryRowOnce) {
  Open();
  form->cmdSelectAll.UserClicks();
  EXPECT_EQ(Ids(), (std::vector<String>{u"1", u"2", u"3"}));
  EXPECT_EQ(MemberCount(), u"3 Member(s)");
}

TEST_F(MemberListTest, LabelAndBarTellOfTheWorkAndGo) {
  Open();
  form->cmdSelectAll.UserClicks();
  EXPECT_EQ(form->lblSave.Caption(), u"Saving contacts...");
  EXPECT_FALSE(form->lblSave.Visible());
  EXPECT_FALSE(form->pbrSave.Visible());
  EXPECT_EQ(form->pbrSave.Max(), 4);
  EXPECT_EQ(form->pbrSave.Value(), 4);
}

TEST_F(MemberListTest, TabInANameMovesNothing) {
  Candidates({{u"1", u"An\tna", u"98001", u"91", u"1", u"91 98001"}});
  Open();
  Take({1});
  EXPECT_EQ(Column(form->vsfGroupContacts, u"NAME"), (std::vector<String>{u"An\tna"}));
  EXPECT_EQ(Column(form->vsfGroupContacts, u"MOBILENO"), (std::vector<String>{u"98001"}));
  EXPECT_EQ(Column(form->vsfGroupContacts, u"CONTACTTYPE"), (std::vector<String>{u"1"}));
}

TEST_F(MemberListTest, SelectionsFromSeveralSourcesAddUp) {
  Open();
  Take({1});
  Candidates({{u"R1", u"Rita", u"97001", u"", u"3", u"97001"}});
  form->LoadFolderContacts(u"0");
  ASSERT_TRUE(Complete());
  form->cmdSelectAll.UserClicks();
  EXPECT_EQ(Ids(), (std::vector<String>{u"1", u"R1"}));
}

TEST_F(MemberListTest, HundredThousandRowsGoOverAndOut) {
  std::vector<Row> rows;
  for (int id = 1; id <= 100000; ++id) {
    rows.push_back({ToDecimal(id), u"N", u"9", u"", u"1", u"9"});
  }
  Candidates(std::move(rows));
  Open();
  form->cmdSelectAll.UserClicks();
  form->cmdSelectAll.UserClicks();
  EXPECT_EQ(form->Members().Count(), 100000);
  form->vsfGroupContacts.SelectAll();
  form->vsfGroupContacts.UserPresses(controls::KeyCode::Delete, 0);
  EXPECT_EQ(form->Members().Count(), 0);
}

// Removing.

TEST_F(MemberListTest, DeleteRemovesTheSelectedRows) {
  Open();
  form->cmdSelectAll.UserClicks();
  Delete({1, 3});
  EXPECT_EQ(Ids(), (std::vector<String>{u"2"}));
  EXPECT_EQ(MemberCount(), u"1 Member(s)");
}

TEST_F(MemberListTest, RemovedMemberCanBeAddedAgain) {
  Open();
  Take({1});
  Delete({1});
  Take({1});
  EXPECT_EQ(Ids(), (std::vector<String>{u"1"}));
}

TEST_F(MemberListTest, LoadedMembersAreRemovedToo) {
  MembersAre({{u"1", u"Anna", u"", u"", u"1", u""}, {u"4", u"Dora", u"", u"", u"1", u""}});
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  Delete({1});
  EXPECT_EQ(Ids(), (std::vector<String>{u"4"}));
  Take({1, 2});
  EXPECT_EQ(Ids(), (std::vector<String>{u"4", u"1", u"2"}));
  EXPECT_EQ(MemberCount(), u"3 Member(s)");
}

TEST_F(MemberListTest, MemberGivenTwiceIsStillThereWhenOneOfThemGoes) {
  MembersAre({{u"1", u"Anna", u"", u"", u"1", u""}, {u"1", u"Anna", u"", u"", u"1", u""}});
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  Delete({1});
  Take({1});
  EXPECT_EQ(Ids(), (std::vector<String>{u"1"}));
}

TEST_F(MemberListTest, DeleteOnAnEmptyListDoesNothing) {
  Open();
  Delete({});
  EXPECT_EQ(form->vsfGroupContacts.Rows(), 1);
  EXPECT_EQ(ErrorsLogged(), 0);
}

TEST_F(MemberListTest, OtherKeysRemoveNothing) {
  Open();
  Take({1});
  form->vsfGroupContacts.SetRow(1);
  form->vsfGroupContacts.UserPresses(controls::KeyCode::Enter, 0);
  EXPECT_EQ(Ids(), (std::vector<String>{u"1"}));
}

// Sorting and failures.

TEST_F(MemberListTest, HeadingClickSortsAndShowsItsPicture) {
  Open();
  auto& grid = form->vsfFolderContacts;
  const int name = grid.ColIndex(u"NAME");
  grid.UserClicksHeading(name);
  EXPECT_EQ(grid.ColumnAt(name).HeadingPicture, controls::Image::SortAscending);
  grid.UserClicksHeading(name);
  EXPECT_EQ(grid.ColumnAt(name).HeadingPicture, controls::Image::SortDescending);
  EXPECT_EQ(Column(grid, u"NAME").front(), u"Team");
  const int mobile = grid.ColIndex(u"MOBILE_DISPLAY");
  grid.UserClicksHeading(mobile);
  EXPECT_EQ(grid.ColumnAt(name).HeadingPicture, controls::Image::None);
  EXPECT_EQ(grid.ColumnAt(mobile).HeadingPicture, controls::Image::SortAscending);
}

TEST_F(MemberListTest, FailuresAreLoggedUnderTheirProcedures) {
  Open();
  form->vsfFolderContacts.SetRow(1);
  form->vsfGroupContacts.Bind(nullptr);  // leaves two columns, too few for a list
  EXPECT_EQ(ErrorsLogged(u"KTRVAddressBook: Error occurred. "
                         u"Sub:vsfGroupContacts_AfterDataRefresh(), Module: frmGroupsNew()"),
            1);
  form->vsfFolderContacts.Bind(nullptr);
  form->vsfFolderContacts.UserSelects({1}, 1);
  form->SelectMembers();
  EXPECT_EQ(ErrorsLogged(u"KTRVAddressBook: Error occurred. Sub:SelectMembers(), Module: "
                         u"frmGroupsNew()"),
            1);
  form->SelectAllMembers();
  EXPECT_EQ(ErrorsLogged(u"KTRVAddressBook: Error occurred. Sub:SelectAllMembers(), Module: "
                         u"frmGroupsNew()"),
            1);
  form->vsfGroupContacts.Reset(3, 2);  // no column has a key
  form->vsfGroupContacts.UserSelects({1}, 1);
  form->RemoveGroupMembers();
  EXPECT_EQ(ErrorsLogged(u"KTRVAddressBook: Error occurred. Sub RemoveGroupMembers(), Module: "
                         u"frmGroupsNew()"),
            1);
}

}  // namespace
}  // namespace ktrv::forms
