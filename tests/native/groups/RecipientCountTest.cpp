#include "tests/native/groups/GroupsFixture.h"

namespace ktrv::forms {
namespace {

/// Who is reached, before OK. In the list: 1 Anna, 2 Bert, 3 Cora without a number, and the groups
/// 11 "Team" of 1, 2 and R1 and 12 "Void" of nobody.
struct RecipientCountOnDatabase : tests::GroupsOnDatabase {
  void Open() {
    OpenPicker();
    ASSERT_TRUE(Complete());
  }
  const String& Counts() const { return form->lblCounts.Caption(); }
  bool Says(StringView text) {
    return screen.WaitUntil([&] { return Counts() == text; });
  }
  std::vector<String> Names() const { return Column(form->vsfGroupContacts, u"NAME"); }
};

TEST_F(RecipientCountOnDatabase, ContactsAreCountedAtOnce) {
  Open();
  EXPECT_EQ(Counts(), u"");
  Take({1});
  EXPECT_EQ(Counts(), u"1 entry, 1 person");
  Take({2, 3});
  EXPECT_EQ(Counts(), u"3 entries, 3 people, 1 without a number");
  form->cmdRemoveAll.UserClicks();
  EXPECT_EQ(Counts(), u"");
}

TEST_F(RecipientCountOnDatabase, MembersOfGroupsAreCountedToo) {
  Open();
  Take({1, 3, 4, 5});
  EXPECT_EQ(Counts(), u"4 entries, counting the people...");
  EXPECT_TRUE(Says(u"4 entries, 5 people, 1 without a number, 1 number twice"));
  EXPECT_EQ(ErrorsLogged(), 0);
}

TEST_F(RecipientCountOnDatabase, CurrentGroupTellsItsSize) {
  Open();
  Take({4, 5});
  ASSERT_TRUE(Says(u"2 entries, 3 people"));
  form->vsfGroupContacts.UserSelects({1}, 1);
  EXPECT_EQ(Counts(), u"2 entries, 3 people. This group: 3 people");
  form->vsfGroupContacts.UserSelects({2}, 2);
  EXPECT_EQ(Counts(), u"2 entries, 3 people. This group: 0 people");
}

TEST_F(RecipientCountOnDatabase, ThoseWhoAreCountedAreShownAndRemoved) {
  Open();
  Take({1, 2, 3});
  EXPECT_FALSE(form->cmdTwice.Enabled());
  Take({4});
  ASSERT_TRUE(Says(u"4 entries, 6 people, 1 without a number, 2 numbers twice"));
  form->cmdTwice.UserClicks();
  EXPECT_EQ(form->vsfGroupContacts.SelectedRows(), (std::vector<int>{1, 2}));
  EXPECT_EQ(form->lblOutcome.Caption(), u"2 selected");
  form->cmdRemove.UserClicks();
  EXPECT_EQ(Names(), (std::vector<String>{u"Cora", u"Team"}));
  EXPECT_EQ(Counts(), u"2 entries, 4 people, 1 without a number");
  form->cmdWithoutNumber.UserClicks();
  form->cmdRemove.UserClicks();
  EXPECT_EQ(Names(), (std::vector<String>{u"Team"}));
  EXPECT_FALSE(form->cmdWithoutNumber.Enabled());
  form->cmdUndo.UserClicks();
  form->cmdUndo.UserClicks();
  EXPECT_EQ(Counts(), u"4 entries, 6 people, 1 without a number, 2 numbers twice");
}

TEST_F(RecipientCountOnDatabase, ThoseWhoAreCountedAreTheSameInAnotherOrder) {
  Open();
  Take({1, 2, 3});
  auto& list = form->vsfGroupContacts;
  list.UserClicksHeading(list.ColIndex(u"NAME"));
  list.UserClicksHeading(list.ColIndex(u"NAME"));
  EXPECT_EQ(Names(), (std::vector<String>{u"Cora", u"Bert", u"Anna"}));
  form->cmdWithoutNumber.UserClicks();
  EXPECT_EQ(list.SelectedRows(), (std::vector<int>{1}));
}

TEST_F(RecipientCountOnDatabase, NumbersAreTheSameHoweverTheyAreWritten) {
  Run(u"UPDATE SMS_ABCONTACTS SET COUNTRYCODE = '', MOBILENO = '+91 980-01' WHERE ID = 2");
  Open();
  Take({1, 2});
  EXPECT_EQ(Counts(), u"2 entries, 2 people, 1 number twice");
}

TEST_F(RecipientCountOnDatabase, GroupIsCountedAgainAfterItsPropertiesWereOpened) {
  Open();
  Take({4});
  ASSERT_TRUE(Says(u"1 entry, 3 people"));
  Run(u"INSERT INTO SMS_ABGROUPMAPS VALUES (11, '3', 'S')");
  screen.PlayModal([](controls::Form& shown) { shown.Unload(); });
  form->vsfFolderContacts.SetRow(4);
  form->cmdProperty.UserClicks();
  EXPECT_TRUE(Says(u"1 entry, 4 people, 1 without a number"));
}

TEST_F(RecipientCountOnDatabase, MembersOfALoadedGroupAreCounted) {
  OpenToModify(u"11", u"Team");
  EXPECT_EQ(Counts(), u"");
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Counts(), u"2 entries, 2 people");
}

/// The same with members that come when the test says.
struct RecipientCountTest : tests::GroupsTest {
  RecipientCountTest() {
    Candidates({{u"1", u"Anna", u"98001", u"91", u"1", u"91 98001"},
                {u"7", u"Team", u"", u"", u"2", u""},
                {u"8", u"Crew", u"", u"", u"2", u""}});
    driver.Answer(kMembers, {{u"GROUP_ID"}, {u"ID"}, {u"FNAME"}, {u"MOBILENO"}, {u"COUNTRYCODE"}},
                  {{u"7", u"1", u"Anna", u"98001", u"91"},
                   {u"7", u"2", u"Bert", u"98002", u""},
                   {u"8", u"3", u"Cora", u"", u""}});
  }
  static constexpr StringView kMembers = u"SELECT M.GROUP_ID";
  void Open() {
    OpenPicker();
    ASSERT_TRUE(Complete());
  }
  bool Says(StringView text) {
    return screen.WaitUntil([&] { return form->lblCounts.Caption() == text; });
  }
};

TEST_F(RecipientCountTest, GroupsAreReadTogetherAndOnce) {
  Open();
  Take({1, 2, 3});
  EXPECT_TRUE(Says(u"3 entries, 4 people, 1 without a number, 1 number twice"));
  form->cmdRemoveAll.UserClicks();
  form->cmdUndo.UserClicks();
  EXPECT_EQ(form->lblCounts.Caption(), u"3 entries, 4 people, 1 without a number, 1 number twice");
  EXPECT_EQ(Ran(kMembers).size(), 1U);
}

TEST_F(RecipientCountTest, GroupThatComesMeanwhileIsReadNext) {
  Open();
  HoldFetches();
  Take({2});
  Take({3});
  driver.OpenGate.Open();
  EXPECT_TRUE(Says(u"2 entries, 3 people, 1 without a number"));
  EXPECT_EQ(Ran(kMembers).size(), 2U);
}

TEST_F(RecipientCountTest, NobodyWaitsForTheCount) {
  Open();
  HoldFetches();
  Take({1, 2});
  EXPECT_EQ(form->lblCounts.Caption(), u"2 entries, counting the people...");
  form->cmdOK.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Left().SelectedRecipients->Count(), 2);
  driver.OpenGate.Open();
  ASSERT_TRUE(tests::WaitForFetches());
  screen.Pump();
}

TEST_F(RecipientCountTest, DialogThatClosesCancelsTheCount) {
  Open();
  HoldFetches();
  Take({2});
  ASSERT_TRUE(HoldRows(1));
  form->cmdCancel.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_TRUE(screen.WaitUntil([&] { return driver.Cancels() > 0; }));
  driver.FetchGate.Open();
  ASSERT_TRUE(tests::WaitForFetches());
}

TEST_F(RecipientCountTest, GroupThatGoesMeanwhileIsNotCounted) {
  Open();
  HoldFetches();
  Take({1, 2});
  form->vsfGroupContacts.UserSelects({2}, 2);
  form->cmdRemove.UserClicks();
  driver.OpenGate.Open();
  EXPECT_TRUE(Says(u"1 entry, 1 person"));
}

TEST_F(RecipientCountTest, FailedCountIsToldAndLogged) {
  driver.Fail(kMembers, Error(ErrorNumber::TableNotFound, u"none"));
  Open();
  Take({1, 2, 3});
  EXPECT_TRUE(Says(u"3 entries, the people could not be counted"));
  EXPECT_EQ(ErrorsLogged(u"KTRVAddressBook: Error occurred. Sub:CountRecipients(), Module: "
                         u"frmGroupsNew()"),
            1);
  form->cmdOK.UserClicks();
  EXPECT_EQ(Left().SelectedRecipients->Count(), 3);
}

TEST_F(RecipientCountTest, ManyRowsAreCountedInSlices) {
  Candidates(Contacts(25000));
  Open();
  form->cmdSelectAll.UserClicks();
  EXPECT_TRUE(Says(u"25000 entries, 25000 people, 24999 numbers twice"));
  EXPECT_FALSE(form->Reached().IsCounting());
  EXPECT_TRUE(form->cmdTwice.Enabled());
}

TEST_F(RecipientCountTest, ListThatChangesMeanwhileIsCountedAnew) {
  Candidates(Contacts(25000));
  Open();
  form->cmdSelectAll.UserClicks();
  form->vsfGroupContacts.UserSelects({1, 2}, 1);
  form->cmdRemove.UserClicks();
  EXPECT_TRUE(Says(u"24998 entries, 24998 people, 24997 numbers twice"));
  form->cmdSelectAll.UserClicks();
  form->cmdCancel.UserClicks();
  EXPECT_FALSE(form->Reached().IsCounting());
  screen.Pump();
}

// The pairs have equal 32-bit hashes of the standard library.
TEST_F(RecipientCountTest, DifferentNumbersAreNeverTwice) {
  Candidates({{u"1", u"Anna", u"1701023652", u"49", u"1", u""},
              {u"2", u"Bert", u"1701082622", u"49", u"1", u""},
              {u"3", u"Cora", u"1701023622", u"49", u"1", u""},
              {u"4", u"Dora", u"1701082652", u"49", u"1", u""}});
  Open();
  Take({1, 2, 3, 4});
  EXPECT_EQ(form->lblCounts.Caption(), u"4 entries, 4 people");
  EXPECT_FALSE(form->cmdTwice.Enabled());
}

TEST_F(RecipientCountTest, GroupWhoseIdIsNoNumberNeverReachesTheDatabase) {
  Candidates({{u"7 OR 1=1", u"Team", u"", u"", u"2", u""}});
  Open();
  Take({1});
  EXPECT_TRUE(Says(u"1 entry, the people could not be counted"));
  EXPECT_TRUE(Ran(u"OR 1=1").empty());
}

}  // namespace
}  // namespace ktrv::forms
