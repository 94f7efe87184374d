#include "forms/addressbook/RowDeletion.h"

#include "tests/native/addressbook/AddressBookFixture.h"

namespace ktrv::tests {
namespace {

using Texts = std::vector<String>;
using namespace MessageAnswer;

constexpr StringView kNothing = u"No item(s) selected for deletion.";
constexpr StringView kRemote =
    u"This is a Shared Remote Contact. This contact can be deleted from TALVERO only.";

/// The grid has the focus.
struct RowDeletionTest : AddressBookTest {
  RowDeletionTest() {
    SharedFolders({{u"7", u"Staff"}});
    RemoteFolders({{u"3", u"Dealers"}});
    Groups({{u"6", u"Drivers", u"7"}});
    driver.Changes(u"DELETE", 1);
  }
  void Show(std::vector<Row> rows, StringView key = u"SHARED") {
    Counts(Queries::kCountFolderContacts, static_cast<std::int64_t>(rows.size()));
    Lists(std::move(rows));
    Open();
    ClickAndWait(key);
    form->vsfContacts.UserFocuses(true);
  }
  /// Deletes and lets a long deletion and the list afterwards come to their ends.
  void Delete() {
    form->vsfContacts.UserPresses(controls::KeyCode::Delete, 0);
    ASSERT_TRUE(screen.WaitUntil([&] { return !form->IsDeleting(); }));
    ASSERT_TRUE(Complete());
  }
  Texts Deleted() const {
    Texts texts;
    for (const auto& each : Ran(u"DELETE")) texts.push_back(each.Text);
    return texts;
  }
  /// So many contacts, all of them selected.
  void ShowMany(int count) {
    std::vector<Row> rows;
    for (int id = 1; id <= count; ++id) rows.push_back(Item(ToDecimal(id), u"Anna"));
    Show(std::move(rows));
    form->vsfContacts.SelectAll();
    form->vsfContacts.UserSelectsRange(1, 0, true, 1);
  }
};

TEST_F(RowDeletionTest, OnTheHeadingRowTheUserIsToldThatNothingIsSelected) {
  Show({Item(u"1", u"Anna")});
  Delete();
  ASSERT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage().Text, kNothing);
  EXPECT_EQ(screen.LastMessage().Style, 48);
  EXPECT_TRUE(Deleted().empty());
}

TEST_F(RowDeletionTest, OnAResetGridToo) {
  Open();
  form->vsfContacts.SetRow(1);
  form->ContactDelete();
  EXPECT_EQ(screen.LastMessage().Text, kNothing);
}

TEST_F(RowDeletionTest, OnAnEmptyListToo) {
  Show({});
  Delete();
  EXPECT_EQ(screen.LastMessage().Text, kNothing);
}

TEST_F(RowDeletionTest, ARowThatIsCurrentButNotSelectedIsNotMeant) {
  Show({Item(u"1", u"Anna")});
  form->vsfContacts.UserSelectsRange(1, 1, false, 1);
  Delete();
  EXPECT_EQ(screen.LastMessage().Text, kNothing);
  EXPECT_TRUE(Deleted().empty());
}

TEST_F(RowDeletionTest, AGeneralUserDeletesNothingInTheRootAndIsToldNothing) {
  session.IsAdmin = UserType::GeneralUser;
  Show({Item(u"1", u"Anna")});
  form->vsfContacts.SetRow(1);
  Delete();
  form->vsfContacts.SetRow(0);
  Delete();
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_TRUE(Deleted().empty());
}

TEST_F(RowDeletionTest, AGeneralUserMayDeleteInAFolder) {
  session.IsAdmin = UserType::GeneralUser;
  Show({Item(u"1", u"Anna")}, u"SFLD7");
  form->vsfContacts.SetRow(1);
  screen.Answer(Yes);
  Delete();
  EXPECT_EQ(Deleted().size(), 2U);
}

TEST_F(RowDeletionTest, TheQuestionOffersNoFirstAndNoDeletesNothing) {
  Show({Item(u"1", u"Anna")});
  form->vsfContacts.SetRow(1);
  screen.Answer(No);
  Delete();
  ASSERT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage().Text, u"Are you sure you want to delete the selected item(s)?");
  EXPECT_EQ(screen.LastMessage().Style, 4 + 32 + 256);
  EXPECT_TRUE(Deleted().empty());
  EXPECT_EQ(form->vsfContacts.Row(), 1);
}

TEST_F(RowDeletionTest, AContactGoesWithItsMemberships) {
  Show({Item(u"1", u"Anna")});
  form->vsfContacts.SetRow(1);
  screen.Answer(Yes);
  Delete();
  EXPECT_EQ(Deleted(), (Texts{u"DELETE FROM SMS_ABCONTACTS WHERE ID = 1",
                              u"DELETE FROM SMS_ABGROUPMAPS WHERE CONTACT_ID = '1'"}));
}

TEST_F(RowDeletionTest, AGroupGoesWithItsMembershipsAndTheTreeIsBuiltAnew) {
  Show({Item(u"6", u"Drivers", u"2")}, u"SFLD7");
  form->vsfContacts.SetRow(1);
  Groups({});
  screen.Answer(Yes);
  Delete();
  EXPECT_EQ(Deleted(), (Texts{u"DELETE FROM SMS_ABGROUPS WHERE ID = 6",
                              u"DELETE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 6"}));
  EXPECT_EQ(form->tvwContacts.Find(u"SHGR6"), nullptr);
}

TEST_F(RowDeletionTest, WithoutAGroupTheTreeStays) {
  Show({Item(u"1", u"Anna")});
  form->vsfContacts.SetRow(1);
  screen.Answer(Yes);
  Delete();
  EXPECT_EQ(Ran(Queries::kGroups).size(), 1U);
}

TEST_F(RowDeletionTest, TheListIsLoadedAgain) {
  Show({Item(u"1", u"Anna"), Item(u"2", u"Bert")});
  form->vsfContacts.SetRow(1);
  Lists({Item(u"2", u"Bert")});
  screen.Answer(Yes);
  Delete();
  EXPECT_EQ(Column(u"NAME"), (Texts{u"Bert"}));
}

TEST_F(RowDeletionTest, OnlyTheSelectedRowsGoInTheirOrder) {
  Show({Item(u"1", u"Anna"), Item(u"2", u"Bert"), Item(u"5", u"Boat", u"2"), Item(u"4", u"Carl")});
  form->vsfContacts.UserSelects({4, 1, 3}, 1);
  screen.Answer(Yes);
  Delete();
  EXPECT_EQ(Deleted(), (Texts{u"DELETE FROM SMS_ABCONTACTS WHERE ID = 1",
                              u"DELETE FROM SMS_ABGROUPMAPS WHERE CONTACT_ID = '1'",
                              u"DELETE FROM SMS_ABGROUPS WHERE ID = 5",
                              u"DELETE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 5",
                              u"DELETE FROM SMS_ABCONTACTS WHERE ID = 4",
                              u"DELETE FROM SMS_ABGROUPMAPS WHERE CONTACT_ID = '4'"}));
}

TEST_F(RowDeletionTest, SelectedRowsWithoutACurrentOneGo) {
  Show({Item(u"1", u"Anna"), Item(u"2", u"Bert")});
  form->vsfContacts.SelectAll();
  ASSERT_EQ(form->vsfContacts.Row(), 0);
  screen.Answer(Yes);
  Delete();
  ASSERT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage().Text, u"Are you sure you want to delete the selected item(s)?");
  EXPECT_EQ(Deleted().size(), 4U);
}

TEST_F(RowDeletionTest, TheGridWithTheFocusLeavesTheTreesNodeAlone) {
  Show({Item(u"1", u"Anna")}, u"SHGR6");
  form->vsfContacts.SetRow(1);
  // The tree had the focus when a dialog took it, and was told nothing when the grid got it.
  form->tvwContacts.UserFocuses(true);
  form->vsfContacts.UserFocuses(true);
  screen.Answer(Yes);
  Delete();
  EXPECT_EQ(Deleted().front(), u"DELETE FROM SMS_ABCONTACTS WHERE ID = 1");
  EXPECT_EQ(Deleted().size(), 2U);
}

TEST_F(RowDeletionTest, EachRemoteContactIsWarnedOfAndLeft) {
  Show({Item(u"D1", u"Acme", u"3"), Item(u"1", u"Anna"), Item(u"17", u"Zenith", u"3")}, u"SHGR6");
  form->vsfContacts.SelectAll();
  form->vsfContacts.UserSelectsRange(1, 0, true, 1);
  screen.Answer(Yes);
  Delete();
  ASSERT_EQ(screen.Messages.size(), 3U);
  for (const std::size_t message : {1U, 2U}) {
    EXPECT_EQ(screen.Messages[message].Text, kRemote);
    EXPECT_EQ(screen.Messages[message].Style, 48);
  }
  EXPECT_EQ(Deleted(), (Texts{u"DELETE FROM SMS_ABCONTACTS WHERE ID = 1",
                              u"DELETE FROM SMS_ABGROUPMAPS WHERE CONTACT_ID = '1'"}));
}

TEST_F(RowDeletionTest, AConnectionClosedBetweenRowsLeavesNone) {
  Show({Item(u"1", u"Anna"), Item(u"D1", u"Acme", u"3"), Item(u"2", u"Bert")}, u"SHGR6");
  form->vsfContacts.SelectAll();
  screen.Answer(Yes);
  screen.WhileAsked([] {});
  screen.WhileAsked([&] { form->Place().Database.Close(); });
  Delete();
  EXPECT_EQ(Deleted().size(), 4U);
  EXPECT_EQ(Log(), u"");
}

TEST_F(RowDeletionTest, InARemoteFolderNothingIsAsked) {
  Counts(Queries::kCountRemoteContacts, 1);
  Show({Item(u"D1", u"Acme", u"3")}, u"RFLD3");
  form->vsfContacts.SetRow(1);
  Delete();
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_TRUE(Deleted().empty());
}

TEST_F(RowDeletionTest, InAGroupTheContactItselfGoes) {
  Show({Item(u"1", u"Anna")}, u"SHGR6");
  form->vsfContacts.SetRow(1);
  screen.Answer(Yes);
  Delete();
  EXPECT_EQ(Deleted().front(), u"DELETE FROM SMS_ABCONTACTS WHERE ID = 1");
}

TEST_F(RowDeletionTest, ARowOfAnUnknownTypeIsLeft) {
  Show({Item(u"1", u"Anna", u"9")});
  form->vsfContacts.SetRow(1);
  screen.Answer(Yes);
  Delete();
  EXPECT_TRUE(Deleted().empty());
}

// Failures.

TEST_F(RowDeletionTest, AFailureLeavesTheRowsBeforeItDeletedAndThoseBehindItAlone) {
  Show({Item(u"1", u"Anna"), Item(u"2", u"Bert"), Item(u"3", u"Carl")});
  driver.Fail(u"DELETE FROM SMS_ABCONTACTS WHERE ID = 2",
              Error(ErrorNumber::DriverFailure, u"locked"));
  form->vsfContacts.SelectAll();
  form->vsfContacts.UserSelectsRange(1, 0, true, 1);
  Lists({Item(u"2", u"Bert"), Item(u"3", u"Carl")});
  screen.Answer(Yes);
  Delete();
  EXPECT_EQ(Deleted(), (Texts{u"DELETE FROM SMS_ABCONTACTS WHERE ID = 1",
                              u"DELETE FROM SMS_ABGROUPMAPS WHERE CONTACT_ID = '1'",
                              u"DELETE FROM SMS_ABCONTACTS WHERE ID = 2"}));
  EXPECT_EQ(ErrorsLogged(kDeleteContext), 1);
  EXPECT_EQ(Column(u"NAME"), (Texts{u"Bert", u"Carl"}));
  EXPECT_EQ(screen.Messages.size(), 1U);
}

TEST_F(RowDeletionTest, AGroupWhoseMembershipsCouldNotBeDeletedIsGoneFromTheTree) {
  Show({Item(u"6", u"Drivers", u"2")}, u"SFLD7");
  driver.Fail(u"DELETE FROM SMS_ABGROUPMAPS", Error(ErrorNumber::DriverFailure, u"locked"));
  form->vsfContacts.SetRow(1);
  Groups({});
  screen.Answer(Yes);
  Delete();
  EXPECT_EQ(form->tvwContacts.Find(u"SHGR6"), nullptr);
}

TEST_F(RowDeletionTest, AnIdThatIsNoNumberNeverReachesTheDatabase) {
  Show({Item(u"1 OR 1=1", u"Anna"), Item(u"6;DROP", u"Boat", u"2")});
  for (const int row : {1, 2}) {
    form->vsfContacts.SetRow(row);
    screen.Answer(Yes);
    Delete();
  }
  EXPECT_TRUE(Deleted().empty());
  EXPECT_EQ(ErrorsLogged(kDeleteContext), 2);
}

// Many rows.

TEST_F(RowDeletionTest, TenThousandRowsGoOneByOne) {
  ShowMany(10000);
  screen.Answer(Yes);
  Delete();
  const Texts deleted = Deleted();
  ASSERT_EQ(deleted.size(), 20000U);
  EXPECT_EQ(deleted.front(), u"DELETE FROM SMS_ABCONTACTS WHERE ID = 1");
  EXPECT_EQ(deleted.back(), u"DELETE FROM SMS_ABGROUPMAPS WHERE CONTACT_ID = '10000'");
  EXPECT_EQ(screen.Messages.size(), 1U);
}

/// More than can be deleted in a moment.
struct LongDeletionTest : RowDeletionTest {
  static constexpr int kMany = 30000;

  LongDeletionTest() {
    ShowMany(kMany);
    screen.Answer(Yes);
    form->vsfContacts.UserPresses(controls::KeyCode::Delete, 0);
  }
  /// What the log says when so many statements, two for each contact, are all that ran.
  static String LeftAfter(std::size_t statements) {
    return u"Deletion stopped: " + ToDecimal(static_cast<std::int64_t>(statements / 2)) +
           u" of 30000 item(s) were deleted.\r\n";
  }
};

TEST_F(LongDeletionTest, TheWindowLivesOnMeanwhileAndSaysHowFarItIs) {
  ASSERT_TRUE(form->IsDeleting());
  EXPECT_LT(Deleted().size(), 2U * kMany);
  EXPECT_TRUE(Panel(1).starts_with(u"Deleting item(s): "));
  EXPECT_TRUE(Panel(1).ends_with(u" of 30000"));
  Lists({});
  ASSERT_TRUE(screen.WaitUntil([&] { return !form->IsDeleting(); }));
  EXPECT_EQ(Deleted().size(), 2U * kMany);
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Log(), u"");
}

TEST_F(LongDeletionTest, AnotherCommandWaitsUntilItIsOver) {
  ASSERT_TRUE(form->IsDeleting());
  form->ContactDelete();
  form->ContactProperties();
  form->ContactNew({});
  EXPECT_EQ(screen.Messages.size(), 1U);
}

TEST_F(LongDeletionTest, ClosedTheWindowLeavesTheRest) {
  ASSERT_TRUE(form->IsDeleting());
  const std::size_t deleted = Deleted().size();
  form->UserCloses();
  screen.Pump();
  EXPECT_EQ(Deleted().size(), deleted);
  EXPECT_EQ(Log(), LeftAfter(deleted));
  Open();
  EXPECT_FALSE(form->IsDeleting());
}

TEST_F(LongDeletionTest, DestroyedItLeavesTheRest) {
  const std::size_t deleted = Deleted().size();
  form.reset();
  screen.Pump();
  EXPECT_EQ(Deleted().size(), deleted);
}

// What happens meanwhile.

TEST_F(RowDeletionTest, RowsThatComeWhileItIsAskedAreNotMeant) {
  std::vector<Row> rows;
  for (int id = 1; id <= 2500; ++id) rows.push_back(Item(ToDecimal(id), u"Anna"));
  Counts(Queries::kCountFolderContacts, 2500);
  Lists(std::move(rows));
  Open();
  Click(u"SHARED");
  ASSERT_TRUE(screen.WaitUntil([&] { return form->vsfContacts.Rows() > 1000; }));
  form->vsfContacts.SelectRows(1, 2);
  screen.WhileAsked([&] { ASSERT_TRUE(Complete()); });
  screen.Answer(Yes);
  Delete();
  EXPECT_EQ(Deleted().size(), 4U);
}

TEST_F(RowDeletionTest, ADeletionDuringALoadDeletesWhatIsSelectedAndLoadsAgain) {
  std::vector<Row> rows;
  for (int id = 1; id <= 2500; ++id) rows.push_back(Item(ToDecimal(id), u"Anna"));
  Counts(Queries::kCountFolderContacts, 2500);
  Lists(std::move(rows));
  Open();
  Click(u"SHARED");
  ASSERT_TRUE(screen.WaitUntil([&] { return form->vsfContacts.Rows() > 1000; }));
  form->vsfContacts.SetRow(7);
  screen.Answer(Yes);
  Delete();
  EXPECT_EQ(Deleted().front(), u"DELETE FROM SMS_ABCONTACTS WHERE ID = 7");
  EXPECT_EQ(form->vsfContacts.Rows(), 2501);
}

TEST_F(RowDeletionTest, AnotherNodeChosenWhileItIsAskedChangesNothingOfWhatIsMeant) {
  Show({Item(u"1", u"Anna"), Item(u"2", u"Bert")});
  form->vsfContacts.SetRow(2);
  screen.WhileAsked([&] {
    Lists({Item(u"8", u"Other"), Item(u"9", u"Another")});
    ClickAndWait(u"SFLD7");
  });
  screen.Answer(Yes);
  Delete();
  EXPECT_EQ(Deleted().front(), u"DELETE FROM SMS_ABCONTACTS WHERE ID = 2");
}

TEST_F(RowDeletionTest, AWindowUnloadedDuringAWarningLeavesTheRest) {
  Show({Item(u"D1", u"Acme", u"3"), Item(u"1", u"Anna")}, u"SHGR6");
  form->vsfContacts.SelectAll();
  form->vsfContacts.UserSelectsRange(1, 0, true, 1);
  screen.Answer(Yes);
  screen.WhileAsked([] {});
  screen.WhileAsked([&] { form->Unload(); });
  form->vsfContacts.UserPresses(controls::KeyCode::Delete, 0);
  screen.Pump();
  EXPECT_EQ(screen.Messages.size(), 2U);
  EXPECT_TRUE(Deleted().empty());
}

}  // namespace
}  // namespace ktrv::tests
