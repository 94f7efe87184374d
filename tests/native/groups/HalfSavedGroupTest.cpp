#include "data/GroupQueries.h"
#include "tests/native/groups/GroupsFixture.h"

namespace ktrv::forms {
namespace {

constexpr StringView kIncomplete = u"The stored group is incomplete. OK tries again.";
constexpr StringView kInsertGroup = u"INSERT INTO SMS_ABGROUPS ";
constexpr StringView kInsertMember = u"INSERT INTO SMS_ABGROUPMAPS";
constexpr StringView kReadBack = u"SELECT ID FROM SMS_ABGROUPS WHERE NAME";

/// A save that does not come to its end, and what may follow it.
struct HalfSavedGroup : tests::GroupsOnDatabase {
  void Modify() {
    OpenToModify(u"11", u"Team");
    ASSERT_TRUE(Complete());
  }
  void AddWithThree(StringView name) {
    OpenToAdd(u"1");
    ASSERT_TRUE(Complete());
    Take({1, 2, 3});
    form->txtGroupName.UserTypes(name);
  }
  void Press() { form->cmdOK.UserClicks(); }
  /// The n-th such statement ends for want of memory.
  void BreakOnce(StringView start, int n) {
    FailOnce(start, n, [] { throw std::bad_alloc(); });
  }
  int ReadBacksOf(const std::function<void()>& work) {
    int count = 0;
    watched.BeforeExecute = [&](StringView text) { count += text.starts_with(kReadBack) ? 1 : 0; };
    work();
    watched.BeforeExecute = nullptr;
    return count;
  }
  String Groups() { return Query(u"SELECT NAME FROM SMS_ABGROUPS ORDER BY ID"); }
};

/// On an engine without transactions: what a failed statement did stays unknown.
struct HalfSavedAlone : HalfSavedGroup {
  HalfSavedAlone() { watched.HasTransactions = false; }
};

TEST_F(HalfSavedGroup, TooLongACodeDoesNotCostTheOldMembers) {
  Run(u"INSERT INTO ZUL$CONTACTS (CODE, NAME, MOBILENO, CATEGORY) VALUES "
      u"('R12345678901234567890123456789012345678901234567890', 'Long', '9', 'D')");
  Modify();
  ASSERT_TRUE(Choose(u"Dealers"));
  form->cmdSelectAll.UserClicks();
  form->txtGroupName.SetText(u"Crew");
  Press();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,2:S,R1:R");
  EXPECT_EQ(Groups(), u"Team,Void");
  ASSERT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage().Text,
            u"The codes of these members are too long for a group: Long. Please remove them from "
            u"the list.");
  EXPECT_EQ(screen.LastMessage().Style, MessageStyle::Exclamation);
  EXPECT_EQ(ErrorsLogged(kSaveContext), 1);
}

TEST_F(HalfSavedGroup, IsNotTakenForSavedNorForUntouched) {
  Modify();
  FailOnce(kInsertMember, 2);
  Press();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S");
  EXPECT_EQ(ErrorsLogged(kSaveContext), 1);
  EXPECT_TRUE(form->lblSave.Visible());
  EXPECT_EQ(form->lblSave.Caption(), kIncomplete);
}

TEST_F(HalfSavedGroup, IsFinishedByTheNextOkWithoutAQuestion) {
  Modify();
  Take({3});
  FailOnce(kInsertMember, 2);
  Press();
  Press();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,2:S,3:S");
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(HalfSavedAlone, MemberWhoseInsertWorkedUntoldIsNotStoredTwice) {
  Modify();
  Take({3});
  FailOnce(kInsertMember, 2, [&] { Run(u"INSERT INTO SMS_ABGROUPMAPS VALUES (11, '2', 'S')"); });
  Press();
  Press();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,2:S,3:S");
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(HalfSavedGroup, IsNotClosedWithoutAWord) {
  Modify();
  FailOnce(kInsertMember, 2);
  Press();
  screen.Answer(MessageAnswer::No);
  form->cmdCancel.UserClicks();
  EXPECT_TRUE(form->IsLoaded());
  ASSERT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage().Text,
            u"The stored group is incomplete. Do you want to close the window and leave it so?");
  EXPECT_EQ(screen.LastMessage().Style,
            MessageStyle::YesNo | MessageStyle::Question | MessageStyle::DefaultButton2);
  screen.Answer(MessageAnswer::No);
  form->UserCloses();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(form->Result().Unfinished.value().Id, u"11");
  screen.Answer(MessageAnswer::Yes);
  form->cmdCancel.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Left().GroupId, u"");
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S");  // what was written stays
}

TEST_F(HalfSavedGroup, FailedRenameLeavesNothingToAskAbout) {
  Modify();
  FailOnce(u"UPDATE SMS_ABGROUPS");
  Press();
  EXPECT_EQ(form->lblSave.Caption(), u"The group could not be saved.");
  form->cmdCancel.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,2:S,R1:R");
}

TEST_F(HalfSavedGroup, ShortMemoryInTheMiddleDoesNotCostTheOldMembers) {
  Modify();
  form->txtGroupName.SetText(u"Crew");
  BreakOnce(kInsertMember, 2);
  Press();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,2:S,R1:R");
  EXPECT_EQ(Groups(), u"Team,Void");
  EXPECT_EQ(form->lblSave.Caption(), u"The group could not be saved.");
  form->cmdCancel.UserClicks();
  EXPECT_FALSE(form->IsLoaded()) << "was asked about a group that is whole";
}

TEST_F(HalfSavedGroup, ShortMemoryInTheMiddleOfANewGroupLeavesNone) {
  AddWithThree(u"Crew");
  BreakOnce(kInsertMember, 2);
  Press();
  EXPECT_EQ(Groups(), u"Team,Void");
  EXPECT_EQ(form->lblSave.Caption(), u"The group could not be saved.");
  Press();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Groups(), u"Team,Void,Crew");
  EXPECT_EQ(MembershipsOf(u"13"), u"1:S,2:S,3:S");
}

TEST_F(HalfSavedGroup, EngineThatUndoesAllIsNotTakenForOneThatKeepsTheStart) {
  AddWithThree(u"Crew");
  FailOnce(kInsertMember, 2, [&] { watched.UndoTransactions = true; });
  Press();
  EXPECT_EQ(Groups(), u"Team,Void");
  EXPECT_EQ(form->lblSave.Caption(), u"The group could not be saved.");
  watched.UndoTransactions = false;
  Press();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Groups(), u"Team,Void,Crew");
  EXPECT_EQ(MembershipsOf(u"13"), u"1:S,2:S,3:S");
}

// New groups.

TEST_F(HalfSavedGroup, NewGroupKeepsItsRowsAfterCancel) {
  AddWithThree(u"Crew");
  FailOnce(kInsertMember, 3);
  Press();
  EXPECT_EQ(form->lblSave.Caption(), kIncomplete);
  screen.Answer(MessageAnswer::Yes);
  form->cmdCancel.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Groups(), u"Team,Void,Crew");
  EXPECT_EQ(MembershipsOf(u"13"), u"1:S,2:S");
  EXPECT_EQ(Left().GroupId, u"");
}

TEST_F(HalfSavedGroup, NewGroupWhoseReadBackFailsIsNotStoredTwice) {
  AddWithThree(u"Crew");
  FailOnce(kReadBack);
  Press();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(ErrorsLogged(kSaveContext), 1);
  EXPECT_EQ(form->lblSave.Caption(), kIncomplete);
  Press();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(Groups(), u"Team,Void,Crew");
  EXPECT_EQ(Left().GroupId, u"13");
  EXPECT_EQ(MembershipsOf(u"13"), u"1:S,2:S,3:S");
}

TEST_F(HalfSavedGroup, NewGroupThatWasFoundIsLookedForNoMore) {
  AddWithThree(u"Crew");
  FailOnce(kReadBack);
  Press();
  FailOnce(kInsertMember, 2);
  Press();
  ASSERT_TRUE(form->IsLoaded());
  EXPECT_EQ(ReadBacksOf([this] { Press(); }), 0);
  EXPECT_FALSE(form->IsLoaded());
}

TEST_F(HalfSavedAlone, NewGroupThatIsNotThereIsLookedForNoMore) {
  AddWithThree(u"Crew");
  FailOnce(kInsertGroup);
  Press();
  form->txtGroupName.SetText(u"");
  EXPECT_EQ(ReadBacksOf([this] { Press(); }), 1);
  EXPECT_EQ(ReadBacksOf([this] { Press(); }), 0);
}

TEST_F(HalfSavedAlone, NewGroupThatIsSomebodyElsesIsLookedForNoMore) {
  AddWithThree(u"Crew");
  FailOnce(kInsertGroup, 1,
           [&] { Run(u"INSERT INTO SMS_ABGROUPS (NAME, FOLDER_ID) VALUES ('Crew', 0)"); });
  Press();
  EXPECT_EQ(ReadBacksOf([this] { Press(); }), 1);
  EXPECT_EQ(ReadBacksOf([this] { Press(); }), 0);
  EXPECT_EQ(Groups(), u"Team,Void,Crew");
}

TEST_F(HalfSavedGroup, NewGroupRenamedAfterAFailedReadBackIsOneGroup) {
  AddWithThree(u"Crew");
  FailOnce(kReadBack);
  Press();
  form->txtGroupName.SetText(u"Club");
  Press();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Groups(), u"Team,Void,Club");
  EXPECT_EQ(MembershipsOf(u"13"), u"1:S,2:S,3:S");
}

TEST_F(HalfSavedAlone, NewGroupWhoseInsertWorkedUntoldIsNotStoredTwice) {
  AddWithThree(u"Crew");
  FailOnce(kInsertGroup, 1,
           [&] { Run(u"INSERT INTO SMS_ABGROUPS (NAME, FOLDER_ID) VALUES ('Crew', 1)"); });
  Press();
  EXPECT_TRUE(form->IsLoaded());
  Press();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Groups(), u"Team,Void,Crew");
  EXPECT_EQ(MembershipsOf(u"13"), u"1:S,2:S,3:S");
}

TEST_F(HalfSavedGroup, NewGroupWhoseInsertDidNothingIsInsertedAgain) {
  AddWithThree(u"Crew");
  FailOnce(kInsertGroup);
  Press();
  EXPECT_EQ(form->lblSave.Caption(), u"The group could not be saved.");
  Press();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Groups(), u"Team,Void,Crew");
}

TEST_F(HalfSavedAlone, AnothersGroupOfThatNameIsNotTakenForTheNewOne) {
  AddWithThree(u"Crew");
  FailOnce(kInsertGroup, 1, [&] {
    Run(u"INSERT INTO SMS_ABGROUPS (NAME, FOLDER_ID) VALUES ('Crew', 1)");
    Run(u"INSERT INTO SMS_ABGROUPMAPS VALUES (13, '4', 'S')");
  });
  Press();
  Press();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(screen.LastMessage().Text,
            u"A group with that name already exists. Please use a different group name.");
  EXPECT_EQ(MembershipsOf(u"13"), u"4:S");
}

TEST_F(HalfSavedAlone, NewGroupThatStoodUntoldIsNotLeftWithoutAWord) {
  AddWithThree(u"Crew");
  FailOnce(kInsertGroup, 1,
           [&] { Run(u"INSERT INTO SMS_ABGROUPS (NAME, FOLDER_ID) VALUES ('Crew', 1)"); });
  Press();
  screen.Answer(MessageAnswer::No);
  form->cmdCancel.UserClicks();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(screen.Messages.size(), 1U);
}

struct HalfSavedOnAFake : tests::GroupsTest {};

TEST_F(HalfSavedOnAFake, NewGroupThatIsNotFoundAgainIsInsertedOnce) {
  namespace Queries = data::GroupQueries;
  driver.Answer(Queries::kGroupIdByName, {{u"ID", database::DataType::Integer}}, {});
  GroupIs(u"Crew");
  OpenToAdd();
  ASSERT_TRUE(Complete());
  form->txtGroupName.UserTypes(u"Crew");
  for (int times = 1; times <= 3; ++times) {
    form->cmdOK.UserClicks();
    EXPECT_TRUE(form->IsLoaded());
    EXPECT_EQ(form->lblSave.Caption(), kIncomplete);
    EXPECT_EQ(ErrorsLogged(kSaveContext), times);
  }
  EXPECT_EQ(Ran(Queries::kInsertGroup).size(), 1U);
  EXPECT_TRUE(Ran(Queries::kClearMembers).empty());
  driver.Answer(Queries::kGroupIdByName, {{u"ID", database::DataType::Integer}}, {{u"77"}});
  form->cmdOK.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Ran(Queries::kInsertGroup).size(), 1U);
}

// A database that is not there when the dialog opens.

struct OpenedDuringAnOutage : tests::GroupsOnDatabase {
  OpenedDuringAnOutage() { outage = true; }
};

TEST_F(OpenedDuringAnOutage, EditorIsNotUselessAfterwards) {
  OpenToModify(u"11", u"Team");
  form->cmdOK.UserClicks();
  EXPECT_TRUE(form->IsLoaded());
  outage = false;
  form->cmdOK.UserClicks();  // fetches the members
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Column(form->vsfGroupContacts, u"ID"), (std::vector<String>{u"1", u"2"}));
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,2:S,R1:R");
  EXPECT_EQ(Sources(), (std::vector<String>{u"Shared Contacts", u"Friends", u"Dealers"}));
  Take({3});
  form->cmdOK.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,2:S,3:S");
}

TEST_F(OpenedDuringAnOutage, RenameBeforeTheDatabaseIsBackIsNotUndone) {
  OpenToModify(u"11", u"Crew");  // as it was called once
  outage = false;
  form->cmdOK.UserClicks();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(form->txtGroupName.Text(), u"Team");
  form->cmdOK.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Query(u"SELECT NAME FROM SMS_ABGROUPS WHERE ID = 11"), u"Team");
}

TEST_F(OpenedDuringAnOutage, TypedNameIsNotLostWhenTheMembersCome) {
  OpenToModify(u"11", u"Team");
  form->txtGroupName.SetText(u"Crew");
  outage = false;
  form->cmdOK.UserClicks();
  ASSERT_TRUE(Complete());
  form->cmdOK.UserClicks();
  EXPECT_EQ(Query(u"SELECT NAME FROM SMS_ABGROUPS WHERE ID = 11"), u"Crew");
}

TEST_F(OpenedDuringAnOutage, PickerIsFilledByFind) {
  OpenPicker();
  form->cmdFind.UserClicks();
  EXPECT_EQ(form->vsfFolderContacts.Rows(), 1);
  outage = false;
  form->cmdFind.UserClicks();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(form->vsfFolderContacts.Rows(), 6);
  ASSERT_TRUE(Choose(u"Friends"));
  EXPECT_EQ(Column(form->vsfFolderContacts, u"NAME"), (std::vector<String>{u"Dora"}));
}

TEST_F(OpenedDuringAnOutage, NewContactDoesNotComeIntoAListWithoutTheOthers) {
  OpenPicker();
  outage = false;
  screen.PlayModal([](controls::Form& contact) { contact.UserCloses(); });
  form->cmdNew.UserClicks();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(form->vsfFolderContacts.Rows(), 6);
}

TEST_F(OpenedDuringAnOutage, PickerIsNotClosedByTheOkThatFillsIt) {
  OpenPicker();
  outage = false;
  form->cmdOK.UserClicks();
  EXPECT_TRUE(form->IsLoaded());
  ASSERT_TRUE(Complete());
  EXPECT_EQ(form->vsfFolderContacts.Rows(), 6);
}

TEST_F(OpenedDuringAnOutage, FoldersThatFailedAreOfferedOnceTheyCanBe) {
  outage = false;
  session.Database.Open();
  FailOnce(u"SELECT ID, NAME, TYPE, REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS");
  OpenToAdd();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Sources(), (std::vector<String>{u"Shared Contacts"}));
  form->cmdFind.UserClicks();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Sources(), (std::vector<String>{u"Shared Contacts", u"Friends", u"Dealers"}));
}

TEST_F(OpenedDuringAnOutage, NewGroupIsStoredOnceTheDatabaseIsBack) {
  OpenToAdd();
  form->txtGroupName.UserTypes(u"Crew");
  form->cmdOK.UserClicks();
  EXPECT_TRUE(form->IsLoaded());
  outage = false;
  form->cmdNew.UserClicks();
  form->cmdOK.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Query(u"SELECT NAME FROM SMS_ABGROUPS ORDER BY ID"), u"Team,Void,Crew");
}

}  // namespace
}  // namespace ktrv::forms
