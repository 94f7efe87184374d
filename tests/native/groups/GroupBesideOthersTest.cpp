#include "tests/native/groups/GroupsFixture.h"
#include "tests/native/support/OtherUser.h"

namespace ktrv::forms {
namespace {

constexpr StringView kChanged =
    u"Another user has changed this group since it was opened. Do you want to replace the changes?";
constexpr StringView kGone =
    u"The selected folder or group does not exist any more. Please select another one.";

/// A group that others work on while the dialog shows it.
struct GroupBesideOthers : tests::GroupsOnDatabase {
  void Modify(String name = u"Team") {
    OpenToModify(u"11", std::move(name));
    ASSERT_TRUE(Complete());
  }
  void Press() { form->cmdOK.UserClicks(); }
  void ExpectAsked(StringView text) {
    ASSERT_EQ(screen.Messages.size(), 1U);
    EXPECT_EQ(screen.LastMessage().Text, text);
    EXPECT_EQ(screen.LastMessage().Style,
              MessageStyle::YesNo | MessageStyle::Question | MessageStyle::DefaultButton2);
  }
  void ExpectRefused(StringView text) {
    EXPECT_TRUE(form->IsLoaded());
    ASSERT_EQ(screen.Messages.size(), 1U);
    EXPECT_EQ(screen.LastMessage().Text, text);
    EXPECT_EQ(screen.LastMessage().Style, MessageStyle::Exclamation);
    EXPECT_EQ(ErrorsLogged(kSaveContext), 1);
  }
  String Names() { return Query(u"SELECT NAME FROM SMS_ABGROUPS ORDER BY ID"); }
};

// What others changed.

TEST_F(GroupBesideOthers, MemberAddedMeanwhileIsNotDroppedUnasked) {
  Modify();
  Run(u"INSERT INTO SMS_ABGROUPMAPS VALUES (11, '4', 'S')");
  screen.Answer(MessageAnswer::No);
  Press();
  EXPECT_TRUE(form->IsLoaded());
  ExpectAsked(kChanged);
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,2:S,R1:R,4:S");
  EXPECT_EQ(ErrorsLogged(), 0);
}

TEST_F(GroupBesideOthers, MemberRemovedMeanwhileDoesNotComeBackUnasked) {
  Modify();
  Run(u"DELETE FROM SMS_ABGROUPMAPS WHERE CONTACT_ID = '2'");
  screen.Answer(MessageAnswer::No);
  Press();
  ExpectAsked(kChanged);
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,R1:R");
}

TEST_F(GroupBesideOthers, RemoteMemberThatIsNotListedIsComparedToo) {
  Modify();
  Run(u"INSERT INTO SMS_ABGROUPMAPS VALUES (11, 'R2', 'R')");
  screen.Answer(MessageAnswer::No);
  Press();
  ExpectAsked(kChanged);
}

TEST_F(GroupBesideOthers, RenameMeanwhileIsNotUndoneUnasked) {
  Modify();
  Run(u"UPDATE SMS_ABGROUPS SET NAME = 'Crew' WHERE ID = 11");
  screen.Answer(MessageAnswer::No);
  Press();
  ExpectAsked(kChanged);
  EXPECT_EQ(Names(), u"Crew,Void");
}

TEST_F(GroupBesideOthers, RenameBeforeTheDialogOpenedIsNotUndone) {
  Run(u"UPDATE SMS_ABGROUPS SET NAME = 'Crew' WHERE ID = 11");
  Modify(u"Team");  // as a tree that was loaded before shows it
  EXPECT_EQ(form->txtGroupName.Text(), u"Crew");
  Press();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(Names(), u"Crew,Void");
}

TEST_F(GroupBesideOthers, YesReplacesWhatOthersDid) {
  Modify();
  Run(u"INSERT INTO SMS_ABGROUPMAPS VALUES (11, '4', 'S')");
  Run(u"UPDATE SMS_ABGROUPS SET NAME = 'Crew' WHERE ID = 11");
  screen.Answer(MessageAnswer::Yes);
  Press();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,2:S");
  EXPECT_EQ(Names(), u"Team,Void");
}

TEST_F(GroupBesideOthers, RepairOfAHalfSavedGroupIsNotUndoneUnasked) {
  Modify();
  FailOnce(u"INSERT INTO SMS_ABGROUPMAPS", 2);
  Press();
  Run(u"INSERT INTO SMS_ABGROUPMAPS VALUES (11, '4', 'S')");
  screen.Answer(MessageAnswer::No);
  Press();
  EXPECT_TRUE(form->IsLoaded());
  ExpectAsked(kChanged);
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,4:S");
}

TEST_F(GroupBesideOthers, ComparisonThatFailsWritesNothing) {
  Modify();
  FailOnce(u"SELECT CONTACT_ID, CONTACT_TYPE");
  Press();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(ErrorsLogged(kSaveContext), 1);
  EXPECT_EQ(form->lblSave.Caption(), u"The group could not be saved.");
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,2:S,R1:R");
}

// Whose save is being written.

struct SavesAtOnceOnDatabase : GroupBesideOthers {};

TEST_F(SavesAtOnceOnDatabase, ChangesThatAreNotCommittedYetAreNotReplacedUnasked) {
  Modify();
  tests::OtherUser other(database, {u"UPDATE SMS_ABGROUPS SET NAME = 'Crew' WHERE ID = 11",
                                    u"INSERT INTO SMS_ABGROUPMAPS VALUES (11, '4', 'S')"});
  screen.Answer(MessageAnswer::No);
  Press();
  EXPECT_TRUE(form->IsLoaded());
  ExpectAsked(kChanged);
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,2:S,R1:R,4:S");
  EXPECT_EQ(Names(), u"Crew,Void");
  EXPECT_EQ(ErrorsLogged(), 0);
}

TEST_F(SavesAtOnceOnDatabase, GroupWhoseDeletionIsNotCommittedYetGetsNoMembers) {
  Modify();
  tests::OtherUser other(database, {u"DELETE FROM SMS_ABGROUPS WHERE ID = 11",
                                    u"DELETE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 11"});
  Press();
  ExpectRefused(kGone);
  EXPECT_EQ(MembershipsOf(u"11"), u"");
}

// Strangers.

TEST_F(GroupBesideOthers, RemoteMemberDoesNotBecomeTheContactOfItsNumber) {
  Run(u"INSERT INTO ZUL$CONTACTS (CODE, NAME, MOBILENO, CATEGORY) VALUES ('4', 'Eve', '9', 'D')");
  Run(u"INSERT INTO SMS_ABGROUPMAPS VALUES (11, '4', 'R')");
  Modify();
  EXPECT_EQ(Column(form->vsfGroupContacts, u"ID"), (std::vector<String>{u"1", u"2"}));
  Press();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,2:S");
}

TEST_F(GroupBesideOthers, ContactThatIsAMemberBesideARemoteOneIsKept) {
  Run(u"INSERT INTO SMS_ABGROUPMAPS VALUES (11, '3', 'R'), (11, '3', 'S')");
  Modify();
  EXPECT_EQ(Column(form->vsfGroupContacts, u"ID"), (std::vector<String>{u"1", u"2", u"3"}));
}

TEST_F(GroupBesideOthers, StrangerThatWasLeftOutCanBeTaken) {
  Run(u"INSERT INTO SMS_ABGROUPMAPS VALUES (11, '3', 'R')");
  Modify();
  Take({3});
  EXPECT_EQ(Column(form->vsfGroupContacts, u"ID"), (std::vector<String>{u"1", u"2", u"3"}));
  Press();
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,2:S,3:S");
}

// What is gone.

TEST_F(GroupBesideOthers, DeletedFolderGetsNoGroup) {
  OpenToAdd(u"1");
  ASSERT_TRUE(Complete());
  form->txtGroupName.UserTypes(u"Crew");
  Run(u"DELETE FROM SMS_ABFOLDERS WHERE ID = 1");
  Press();
  ExpectRefused(kGone);
  EXPECT_EQ(Names(), u"Team,Void");
  EXPECT_EQ(form->txtGroupName.Text(), u"Crew");
}

TEST_F(GroupBesideOthers, FolderThatBecameRemoteGetsNoGroup) {
  OpenToAdd(u"1");
  ASSERT_TRUE(Complete());
  form->txtGroupName.UserTypes(u"Crew");
  Run(u"UPDATE SMS_ABFOLDERS SET TYPE = 'R', REMOTE_CONTACTS_CATEGORY = 'E' WHERE ID = 1");
  Press();
  ExpectRefused(u"Creating a Group in a Shared Remote Contacts folder is not allowed.");
  EXPECT_EQ(Names(), u"Team,Void");
}

TEST_F(GroupBesideOthers, DeletedGroupGetsNoMembers) {
  Modify();
  form->txtGroupName.SetText(u"Crew");
  Run(u"DELETE FROM SMS_ABGROUPS WHERE ID = 11");
  Run(u"DELETE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 11");
  Press();
  ExpectRefused(kGone);
  EXPECT_EQ(MembershipsOf(u"11"), u"");
  EXPECT_EQ(form->txtGroupName.Text(), u"Crew");
}

TEST_F(GroupBesideOthers, GroupGoneBeforeItIsShownIsNotWritten) {
  OpenToModify(u"99", u"Late");
  ASSERT_TRUE(Complete());
  Press();
  ExpectRefused(kGone);
  EXPECT_EQ(form->txtGroupName.Text(), u"Late");
}

TEST_F(GroupBesideOthers, DeletedContactIsNoMember) {
  OpenToAdd();
  ASSERT_TRUE(Complete());
  form->cmdSelectAll.UserClicks();
  form->txtGroupName.UserTypes(u"Crew");
  Run(u"DELETE FROM SMS_ABCONTACTS WHERE ID IN (1, 3)");
  Press();
  ExpectRefused(
      u"These members do not exist any more: Anna, Cora. Please remove them from the list.");
  EXPECT_EQ(Names(), u"Team,Void");
  EXPECT_EQ(Query(u"SELECT COUNT(*) AS N FROM SMS_ABGROUPMAPS"), u"3");
}

TEST_F(GroupBesideOthers, VanishedRemoteContactIsNoMember) {
  OpenToAdd();
  ASSERT_TRUE(Complete());
  ASSERT_TRUE(Choose(u"Dealers"));
  form->cmdSelectAll.UserClicks();
  form->txtGroupName.UserTypes(u"Crew");
  Run(u"DELETE FROM ZUL$CONTACTS WHERE CODE = 'R2'");
  Press();
  ExpectRefused(u"These members do not exist any more: Rolf. Please remove them from the list.");
  EXPECT_EQ(Names(), u"Team,Void");
}

TEST_F(GroupBesideOthers, ManyMembersAreAllLookedFor) {
  String insert = u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME) VALUES ";
  for (int id = 100; id < 700; ++id) {
    const String number = ToDecimal(id);
    insert += (id > 100 ? u", (" : u"(") + number + u", 0, 'N" + number + u"')";
  }
  Run(insert);
  OpenToAdd();
  ASSERT_TRUE(Complete());
  form->cmdSelectAll.UserClicks();
  form->txtGroupName.UserTypes(u"Crew");
  Run(u"DELETE FROM SMS_ABCONTACTS WHERE ID >= 690");
  Press();
  ExpectRefused(
      u"These members do not exist any more: N690, N691, N692, N693, N694 and 5 more. Please "
      u"remove them from the list.");
  Run(u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME) VALUES (690, 0, 'N'), (691, 0, 'N'), "
      u"(692, 0, 'N'), (693, 0, 'N'), (694, 0, 'N'), (695, 0, 'N'), (696, 0, 'N'), (697, 0, 'N'), "
      u"(698, 0, 'N'), (699, 0, 'N')");
  Press();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Query(u"SELECT COUNT(*) AS N FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 13"), u"603");
}

}  // namespace
}  // namespace ktrv::forms
