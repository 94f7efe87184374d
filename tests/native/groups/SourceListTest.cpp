#include "data/GroupQueries.h"
#include "tests/native/groups/GroupsFixture.h"

namespace ktrv::forms {
namespace {

namespace Queries = data::GroupQueries;
using Purpose = Queries::Purpose;

constexpr StringView kSourceContext =
    u"KTRVAddressBook: Error occurred. Sub:LoadFolderContacts(), Module: frmGroupsNew()";

struct SourceListTest : tests::GroupsTest {
  void FolderIs(String type) {
    driver.Answer(Queries::kFolder, {{u"ID"}, {u"NAME"}, {u"TYPE"}, {u"REMOTE_CONTACTS_CATEGORY"}},
                  {{u"8", u"Friends", std::move(type), u""}});
  }
  void Find(StringView text) {
    form->txtFind.Select(0, static_cast<int>(form->txtFind.Text().size()));
    form->txtFind.UserTypes(text);
  }
};

TEST_F(SourceListTest, SharedContactsComeFirstThenEveryFolder) {
  Folders({{u"3", u"Friends", u"S", u""},
           {u"1", u"Dealers", u"R", u"D"},
           {u"9", std::nullopt, u"S", u""}});
  OpenPicker();
  EXPECT_EQ(Sources(), (std::vector<String>{u"Shared Contacts", u"Friends", u"Dealers", u""}));
  EXPECT_EQ(form->cboContactType.ItemData(0), 0);
  EXPECT_EQ(form->cboContactType.ItemData(1), 3);
  EXPECT_EQ(form->cboContactType.ItemData(2), 1);
}

TEST_F(SourceListTest, LocalGroupsHaveNoSourcesAndAnEmptyList) {
  WorkOn(TypeOfGroup::LocalGroup);
  OpenPicker();
  EXPECT_TRUE(Sources().empty());
  EXPECT_EQ(form->vsfFolderContacts.Rows(), 1);
  EXPECT_TRUE(driver.Executed().empty());
  EXPECT_EQ(ErrorsLogged(), 0);
}

TEST_F(SourceListTest, FailureToFillTheSelectorIsLoggedUnderTheListsName) {
  driver.Fail(Queries::kFolders, Error(ErrorNumber::TableNotFound, u"no table"));
  OpenPicker();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(ErrorsLogged(kSourceContext), 1);
  EXPECT_EQ(Sources(), (std::vector<String>{u"Shared Contacts"}));
}

TEST_F(SourceListTest, SharedContactsAreKindSAndNamedShared) {
  OpenPicker();
  EXPECT_EQ(form->Sources().Kind(), u"S");
  EXPECT_EQ(form->Sources().Name(), u"SHARED");
  EXPECT_EQ(form->Sources().Query(),
            Queries::SharedCandidates(data::Dialect::Sql, Purpose::PickRecipients, u"0"));
}

TEST_F(SourceListTest, EditorIsOfferedNoGroups) {
  OpenToAdd();
  EXPECT_EQ(form->Sources().Query(),
            Queries::SharedCandidates(data::Dialect::Sql, Purpose::EditGroup, u"0"));
  EXPECT_TRUE(Ran(Queries::kCountFolderGroups).empty());
}

TEST_F(SourceListTest, DialectWordIsReadInAnyCase) {
  session.DbType = u"Oracle";
  OpenPicker();
  EXPECT_EQ(form->Sources().Query(),
            Queries::SharedCandidates(data::Dialect::Oracle, Purpose::PickRecipients, u"0"));
  session.DbType = u"sql";
  OpenToAdd();
  EXPECT_EQ(form->Sources().Query(),
            Queries::SharedCandidates(data::Dialect::Sql, Purpose::EditGroup, u"0"));
}

TEST_F(SourceListTest, FolderTellsItsKindAndName) {
  OpenPicker();
  FolderIs(u"R");
  form->LoadFolderContacts(u"8");
  EXPECT_EQ(form->Sources().Kind(), u"R");
  EXPECT_EQ(form->Sources().Name(), u"Friends");
  EXPECT_EQ(form->Sources().Query(),
            Queries::RemoteCandidates(data::Dialect::Sql, Purpose::PickRecipients, u"8"));
}

TEST_F(SourceListTest, BlanksBehindAFoldersTypeDoNotMatter) {
  OpenPicker();
  FolderIs(u"R   ");
  form->LoadFolderContacts(u"8");
  EXPECT_EQ(form->Sources().Kind(), u"R");
  EXPECT_EQ(form->Sources().Query(),
            Queries::RemoteCandidates(data::Dialect::Sql, Purpose::PickRecipients, u"8"));
}

TEST_F(SourceListTest, FolderIdThatIsNoNumberShowsTheSharedContacts) {
  OpenPicker();
  FolderIs(u"S");
  form->LoadFolderContacts(u"abc");
  EXPECT_EQ(form->Sources().Name(), u"SHARED");
  EXPECT_TRUE(Ran(Queries::kFolder).empty());
}

TEST_F(SourceListTest, FolderIdWithMoreThanDigitsNeverReachesTheList) {
  OpenPicker();
  ASSERT_TRUE(Complete());
  FolderIs(u"S");
  form->LoadFolderContacts(u"8 OR 1=1");
  EXPECT_EQ(ErrorsLogged(kSourceContext), 1);
  EXPECT_TRUE(Ran(u"OR 1=1").empty());
}

/// A source is chosen after another, and cannot be loaded.
struct FailedSourceTest : SourceListTest {
  FailedSourceTest() {
    Folders({{u"8", u"Friends", u"S", u""}});
    Candidates({{u"1", u"Anna", u"98001", u"91", u"1", u"91 98001"}});
    OpenPicker();
    EXPECT_TRUE(Complete());
    EXPECT_EQ(Column(form->vsfFolderContacts, u"NAME"), (std::vector<String>{u"Anna"}));
    FolderIs(u"S");
  }
  void NobodyCanBeTaken() {
    EXPECT_TRUE(Choose(u"Friends"));
    EXPECT_EQ(ErrorsLogged(kSourceContext), 1);
    EXPECT_EQ(form->vsfFolderContacts.Rows(), 1);
    EXPECT_EQ(form->vsfFolderContacts.Text(0, form->vsfFolderContacts.ColIndex(u"NAME")), u"Name");
    EXPECT_TRUE(form->lblLoadingFolder.Visible());
    EXPECT_FALSE(form->pbrFolder.Visible());
    EXPECT_FALSE(form->cmdSelectAll.Enabled());
    form->SelectAllMembers();
    form->vsfFolderContacts.UserDoubleClicks();
    EXPECT_EQ(form->Members().Count(), 0);
  }
};

TEST_F(FailedSourceTest, VanishedFolderOffersNobody) {
  driver.Answer(Queries::kFolder, {{u"ID"}, {u"NAME"}, {u"TYPE"}}, {});
  NobodyCanBeTaken();
  EXPECT_EQ(form->lblLoadingFolder.Caption(), u"The contacts could not be loaded.");
  EXPECT_EQ(form->Sources().Kind(), u"");
  EXPECT_EQ(form->Sources().Name(), u"");
}

TEST_F(FailedSourceTest, UncountedFolderOffersNobody) {
  driver.Fail(Queries::kCountFolderContacts, Error(ErrorNumber::DriverFailure, u"gone"));
  NobodyCanBeTaken();
}

TEST_F(FailedSourceTest, RefusedQueryOffersNobody) {
  driver.Fail(u"AS MOBILE_DISPLAY FROM", Error(ErrorNumber::TableNotFound, u"no table"));
  NobodyCanBeTaken();
}

TEST_F(FailedSourceTest, LostDatabaseOffersNobody) {
  Link().Close();
  driver.FailOpen(Error(ErrorNumber::DriverFailure, u"no server"));
  NobodyCanBeTaken();
}

TEST_F(FailedSourceTest, SourceThatComesAfterItIsOfferedWhole) {
  driver.Fail(Queries::kFolder, Error(ErrorNumber::DriverFailure, u"gone"));
  NobodyCanBeTaken();
  ASSERT_TRUE(Choose(u"Shared Contacts"));
  EXPECT_FALSE(form->lblLoadingFolder.Visible());
  EXPECT_TRUE(form->cmdSelectAll.Enabled());
  form->cmdSelectAll.UserClicks();
  EXPECT_EQ(Column(form->vsfGroupContacts, u"NAME"), (std::vector<String>{u"Anna"}));
}

TEST_F(SourceListTest, FolderIdAbove32BitsIsNotCut) {
  Folders({{u"4294967297", u"Far", u"S", u""},
           {u"-4294967295", u"Below", u"S", u""},
           {std::nullopt, u"None", u"S", u""},
           {u"3", u"Friends", u"S", u""}});
  OpenPicker();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Sources(), (std::vector<String>{u"Shared Contacts", u"Friends"}));
  EXPECT_EQ(form->cboContactType.ItemData(1), 3);
  EXPECT_EQ(ErrorsLogged(kSourceContext), 3);
}

TEST_F(SourceListTest, BarRunsToContactsAndGroupsInThePicker) {
  Counts(Queries::kCountFolderContacts, 30);
  Counts(Queries::kCountFolderGroups, 4);
  HoldFetches();
  OpenPicker();
  EXPECT_TRUE(form->lblLoadingFolder.Visible());
  EXPECT_EQ(form->lblLoadingFolder.Caption(), u"Loading...");
  EXPECT_TRUE(form->pbrFolder.Visible());
  EXPECT_EQ(form->pbrFolder.Max(), 34);
  EXPECT_EQ(form->pbrFolder.Value(), 0);
  EXPECT_FALSE(form->cmdSelectAll.Enabled());
  driver.OpenGate.Open();
  ASSERT_TRUE(Complete());
  EXPECT_FALSE(form->lblLoadingFolder.Visible());
  EXPECT_FALSE(form->pbrFolder.Visible());
  EXPECT_TRUE(form->cmdSelectAll.Enabled());
}

TEST_F(SourceListTest, BarRunsToTheRemoteContactsOfTheCategory) {
  OpenToAdd();
  ASSERT_TRUE(Complete());
  FolderIs(u"R");
  Counts(Queries::kCountRemoteContacts, 12);
  form->LoadFolderContacts(u"8");
  EXPECT_EQ(form->pbrFolder.Max(), 12);
  ASSERT_EQ(Ran(Queries::kCountRemoteContacts).size(), 1U);
  EXPECT_EQ(Ran(Queries::kCountRemoteContacts)[0].Values, (std::vector<Variant>{std::int64_t{8}}));
}

TEST_F(SourceListTest, BarRunsToTheGroupsOfARemoteFolderTooInThePicker) {
  OpenPicker();
  ASSERT_TRUE(Complete());
  FolderIs(u"R");
  Counts(Queries::kCountRemoteContacts, 12);
  Counts(Queries::kCountFolderGroups, 4);
  form->LoadFolderContacts(u"8");
  EXPECT_EQ(form->pbrFolder.Max(), 16);
}

TEST_F(SourceListTest, BarMovesToTheNumberOfRowsThatCame) {
  Counts(Queries::kCountFolderContacts, 130);  // ten of which were deleted since
  Candidates(Contacts(120));
  OpenToAdd();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(form->pbrFolder.Max(), 130);
  EXPECT_EQ(form->pbrFolder.Value(), 120);
}

TEST_F(SourceListTest, RowsComeInBlocksOf500) {
  Candidates(Contacts(1200));
  OpenPicker();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(form->vsfFolderContacts.Rows() - 1, 1200);
  EXPECT_EQ(driver.MostRowsAsked(form->Sources().Query()), 500U);
}

TEST_F(SourceListTest, RowsStandUnderTheirKeysWithTwoColumnsShown) {
  Candidates(
      {{u"1", u"Anna", u"98001", u"91", u"1", u"91 98001"}, {u"9", u"Team", u"", u"", u"2", u""}});
  OpenPicker();
  ASSERT_TRUE(Complete());
  auto& grid = form->vsfFolderContacts;
  EXPECT_EQ(Column(grid, u"ID"), (std::vector<String>{u"1", u"9"}));
  EXPECT_EQ(Column(grid, u"NAME"), (std::vector<String>{u"Anna", u"Team"}));
  EXPECT_EQ(Column(grid, u"MOBILENO"), (std::vector<String>{u"98001", u""}));
  EXPECT_EQ(Column(grid, u"COUNTRYCODE"), (std::vector<String>{u"91", u""}));
  EXPECT_EQ(Column(grid, u"CONTACTTYPE"), (std::vector<String>{u"1", u"2"}));
  EXPECT_EQ(Column(grid, u"MOBILE_DISPLAY"), (std::vector<String>{u"91 98001", u""}));
  std::vector<String> shown;
  for (int column = 1; column < grid.Cols(); ++column) {
    if (!grid.ColumnAt(column).Hidden) shown.push_back(grid.Text(0, column));
  }
  EXPECT_EQ(shown, (std::vector<String>{u"Name", u"Mobile No."}));
}

TEST_F(SourceListTest, EachRowHasThePictureOfItsKind) {
  Candidates({{u"1", u"Anna", u"", u"", u"1", u""},
              {u"9", u"Team", u"", u"", u"2", u""},
              {u"R1", u"Rita", u"", u"", u"3", u""}});
  OpenPicker();
  ASSERT_TRUE(Complete());
  auto& grid = form->vsfFolderContacts;
  ASSERT_FALSE(grid.ColumnAt(0).Hidden);
  const auto picture = [&](int row) { return grid.ColumnAt(0).Picture(grid.Text(row, 0)).first; };
  EXPECT_EQ(picture(1), controls::Image::Contact);
  EXPECT_EQ(picture(2), controls::Image::Group);
  EXPECT_EQ(picture(3), controls::Image::RemoteContact);
}

TEST_F(SourceListTest, NewSourceEndsTheFetchOfTheOldOne) {
  Folders({{u"8", u"Friends", u"S", u""}});
  HoldFetches();
  OpenPicker();
  FolderIs(u"S");
  Candidates({{u"4", u"Dora", u"", u"", u"1", u""}});
  form->cboContactType.UserChooses(1);
  driver.OpenGate.Open();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Column(form->vsfFolderContacts, u"NAME"), (std::vector<String>{u"Dora"}));
  EXPECT_EQ(ErrorsLogged(), 0);
}

TEST_F(SourceListTest, FetchIsCancelledBeforeTheNewSourceIsLookedUp) {
  HoldFetches();
  OpenPicker();
  ASSERT_TRUE(HoldRows(1));
  driver.Fail(Queries::kFolder, Error(ErrorNumber::DriverFailure, u"gone"));
  form->LoadFolderContacts(u"8");
  EXPECT_TRUE(screen.WaitUntil([&] { return driver.Cancels() > 0; }));
  driver.FetchGate.Open();
  ASSERT_TRUE(tests::WaitForFetches());
}

TEST_F(SourceListTest, SourceSwitchedTwentyTimesShowsTheLastOneOnly) {
  HoldFetches();
  OpenPicker();
  FolderIs(u"S");
  for (int round = 1; round <= 20; ++round) {
    Candidates({{ToDecimal(round), u"Contact " + ToDecimal(round), u"", u"", u"1", u""}});
    form->LoadFolderContacts(ToDecimal(round));
  }
  driver.OpenGate.Open();
  ASSERT_TRUE(Complete());
  ASSERT_TRUE(tests::WaitForFetches());
  screen.Pump();
  EXPECT_EQ(Column(form->vsfFolderContacts, u"ID"), (std::vector<String>{u"20"}));
  EXPECT_FALSE(form->lblLoadingFolder.Visible());
  EXPECT_EQ(ErrorsLogged(), 0);
}

TEST_F(SourceListTest, RemoteViewThatFailsIsLoggedAndTold) {
  OpenPicker();
  ASSERT_TRUE(Complete());
  FolderIs(u"R");
  driver.Fail(u"V_ZUL$REMOTE_CONTACTS", Error(ErrorNumber::TableNotFound, u"no view"));
  form->LoadFolderContacts(u"8");
  EXPECT_EQ(ErrorsLogged(kSourceContext), 1);
  EXPECT_TRUE(form->lblLoadingFolder.Visible());
  EXPECT_FALSE(form->Sources().IsLoading());
}

TEST_F(SourceListTest, FetchThatFailsHalfWayKeepsWhatCameAndTells) {
  Candidates({{u"1", u"Anna", u"", u"", u"1", u""}});
  driver.FailAtEnd(u"AS MOBILE_DISPLAY FROM", Error(ErrorNumber::DriverFailure, u"line lost"));
  OpenPicker();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Column(form->vsfFolderContacts, u"NAME"), (std::vector<String>{u"Anna"}));
  EXPECT_EQ(ErrorsLogged(kSourceContext), 1);
  EXPECT_EQ(form->lblLoadingFolder.Caption(), u"The list could not be loaded.");
}

TEST_F(SourceListTest, AllIsNotOfferedOfHalfAList) {
  Candidates({{u"1", u"Anna", u"", u"", u"1", u""}});
  driver.FailAtEnd(u"AS MOBILE_DISPLAY FROM", Error(ErrorNumber::DriverFailure, u"line lost"));
  OpenPicker();
  ASSERT_TRUE(Complete());
  EXPECT_FALSE(form->cmdSelectAll.Enabled());
  form->SelectAllMembers();
  EXPECT_EQ(form->Members().Count(), 0);
  Take({1});  // who came is no stranger
  EXPECT_EQ(form->Members().Count(), 1);
  Candidates({{u"1", u"Anna", u"", u"", u"1", u""}, {u"2", u"Bert", u"", u"", u"1", u""}});
  form->LoadFolderContacts(u"0");
  ASSERT_TRUE(Complete());
  EXPECT_TRUE(form->cmdSelectAll.Enabled());
}

TEST_F(SourceListTest, SecondSourceIsLaidOutAnewAndUnsorted) {
  Candidates({{u"1", u"Anna", u"1", u"", u"1", u"1"}, {u"2", u"Bert", u"2", u"", u"1", u"2"}});
  OpenPicker();
  ASSERT_TRUE(Complete());
  auto& grid = form->vsfFolderContacts;
  const int name = grid.ColIndex(u"NAME");
  const int mobile = grid.ColIndex(u"MOBILE_DISPLAY");
  grid.UserClicksHeading(name);
  grid.UserClicksHeading(name);
  ASSERT_EQ(grid.ColumnAt(name).HeadingPicture, controls::Image::SortDescending);
  Candidates({{u"3", u"Cora", u"3", u"", u"1", u"3"}, {u"4", u"Dora", u"4", u"", u"1", u"4"}});
  FolderIs(u"S");
  form->LoadFolderContacts(u"8");
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Column(grid, u"NAME"), (std::vector<String>{u"Cora", u"Dora"}));
  EXPECT_EQ(grid.Text(0, name), u"Name");
  EXPECT_EQ(grid.Text(0, mobile), u"Mobile No.");
  EXPECT_EQ(grid.ColumnAt(name).Width, 2250);
  EXPECT_EQ(grid.ColumnAt(mobile).Width, 1650);
  for (int column = 0; column < grid.Cols(); ++column) {
    EXPECT_EQ(grid.ColumnAt(column).HeadingPicture, controls::Image::None) << column;
    EXPECT_EQ(grid.ColumnAt(column).Hidden, column != 0 && column != name && column != mobile);
  }
}

TEST_F(SourceListTest, TypingFindsTheFirstNameThatBeginsSo) {
  Candidates({{u"1", u"Adam", u"", u"", u"1", u""},
              {u"2", u"Bert", u"", u"", u"1", u""},
              {u"3", u"bertha", u"", u"", u"1", u""}});
  OpenPicker();
  ASSERT_TRUE(Complete());
  Find(u" bE ");
  EXPECT_EQ(form->vsfFolderContacts.Row(), 2);
  EXPECT_EQ(form->vsfFolderContacts.SelectedRows(), (std::vector<int>{2}));
  Find(u"berth");
  EXPECT_EQ(form->vsfFolderContacts.Row(), 3);
  Find(u"zoe");
  EXPECT_EQ(form->vsfFolderContacts.Row(), 3);
}

TEST_F(SourceListTest, FindButtonGoesOnToTheNextAndAround) {
  Candidates({{u"1", u"Bert", u"", u"", u"1", u""},
              {u"2", u"Cora", u"", u"", u"1", u""},
              {u"3", u"Bertha", u"", u"", u"1", u""}});
  OpenPicker();
  ASSERT_TRUE(Complete());
  Find(u"be");
  form->cmdFind.UserClicks();
  EXPECT_EQ(form->vsfFolderContacts.Row(), 3);
  form->cmdFind.UserClicks();
  EXPECT_EQ(form->vsfFolderContacts.Row(), 1);
}

TEST_F(SourceListTest, TypingOnAnEmptyListDoesNothing) {
  OpenPicker();
  ASSERT_TRUE(Complete());
  Find(u"a");
  EXPECT_EQ(form->vsfFolderContacts.Row(), 0);
  EXPECT_EQ(ErrorsLogged(), 0);
}

TEST_F(SourceListTest, FailedLayoutIsLogged) {
  OpenPicker();
  ASSERT_TRUE(Complete());
  form->vsfFolderContacts.Bind(nullptr);  // leaves two columns, too few for a list
  EXPECT_EQ(ErrorsLogged(u"KTRVAddressBook: Error occurred. "
                         u"Sub:vsfFolderContacts_AfterDataRefresh(), Module: frmGroupsNew()"),
            1);
}

struct SourcesOnDatabase : tests::GroupsOnDatabase {};

TEST_F(SourcesOnDatabase, PickerListsContactsAndGroupsInBothFamilies) {
  for (const StringView word : {u"SQL", u"oracle"}) {
    session.DbType = word;
    OpenPicker();
    ASSERT_TRUE(Complete());
    const auto& grid = form->vsfFolderContacts;
    EXPECT_EQ(Column(grid, u"ID"), (std::vector<String>{u"1", u"2", u"3", u"11", u"12"}));
    EXPECT_EQ(Column(grid, u"NAME"),
              (std::vector<String>{u"Anna", u"Bert", u"Cora", u"Team", u"Void"}));
    EXPECT_EQ(Column(grid, u"CONTACTTYPE"), (std::vector<String>{u"1", u"1", u"1", u"2", u"2"}));
    EXPECT_EQ(Column(grid, u"MOBILE_DISPLAY"),
              (std::vector<String>{u"91 98001", u"98002", u"", u"", u""}));
    form.reset();
  }
  EXPECT_EQ(ErrorsLogged(), 0);
}

TEST_F(SourcesOnDatabase, EditorListsContactsOnly) {
  for (const StringView word : {u"SQL", u"ORACLE"}) {
    session.DbType = word;
    OpenToAdd();
    ASSERT_TRUE(Complete());
    EXPECT_EQ(Column(form->vsfFolderContacts, u"NAME"),
              (std::vector<String>{u"Anna", u"Bert", u"Cora"}));
    form.reset();
  }
}

TEST_F(SourcesOnDatabase, FoldersListTheirOwn) {
  OpenPicker();
  ASSERT_TRUE(Complete());
  ASSERT_TRUE(Choose(u"Friends"));
  EXPECT_EQ(Column(form->vsfFolderContacts, u"MOBILE_DISPLAY"), (std::vector<String>{u"44 98004"}));
  ASSERT_TRUE(Choose(u"Dealers"));
  EXPECT_EQ(Column(form->vsfFolderContacts, u"ID"), (std::vector<String>{u"R1", u"R2"}));
  EXPECT_EQ(Column(form->vsfFolderContacts, u"CONTACTTYPE"), (std::vector<String>{u"3", u"3"}));
  ASSERT_TRUE(Choose(u"Shared Contacts"));
  EXPECT_EQ(form->vsfFolderContacts.Rows(), 6);
}

}  // namespace
}  // namespace ktrv::forms
