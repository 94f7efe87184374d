#include "data/GroupQueries.h"
#include "tests/native/groups/GroupsFixture.h"

namespace ktrv::forms {
namespace {

namespace Queries = data::GroupQueries;

struct GroupSaveTest : tests::GroupsTest {
  /// The texts that wrote something, in order.
  std::vector<String> Written() const {
    std::vector<String> texts;
    for (const auto& execution : driver.Executed()) {
      if (execution.Text.rfind(u"SELECT", 0) != 0) texts.push_back(execution.Text);
    }
    return texts;
  }
  void Modify(std::vector<Row> members) {
    MembersAre(std::move(members));
    OpenToModify(u"5", u"Team");
    ASSERT_TRUE(Complete());
  }
};

TEST_F(GroupSaveTest, NewGroupIsInsertedReadBackAndFilledInThisOrder) {
  Candidates({{u"1", u"Anna", u"", u"", u"1", u""}, {u"R1", u"Rita", u"", u"", u"3", u""}});
  OpenToAdd(u"8");
  ASSERT_TRUE(Complete());
  form->cmdSelectAll.UserClicks();
  form->txtGroupName.UserTypes(u" Team ");
  form->cmdOK.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  const auto ran = driver.Executed();
  ASSERT_GE(ran.size(), 5U);
  const auto* last = &ran[ran.size() - 5];
  EXPECT_EQ(last[0].Text, Queries::kInsertGroup);
  EXPECT_EQ(last[0].Values, (std::vector<Variant>{String(u"Team"), std::int64_t{8}}));
  EXPECT_EQ(last[1].Text, Queries::kGroupIdByName);
  EXPECT_EQ(last[2].Text, Queries::kClearMembers);
  EXPECT_EQ(last[2].Values, (std::vector<Variant>{std::int64_t{77}}));
  EXPECT_EQ(last[3].Text, Queries::kInsertMember);
  EXPECT_EQ(last[3].Values, (std::vector<Variant>{std::int64_t{77}, String(u"1"), String(u"S")}));
  EXPECT_EQ(last[4].Values, (std::vector<Variant>{std::int64_t{77}, String(u"R1"), String(u"R")}));
  EXPECT_EQ(Left().GroupId, u"77");
  EXPECT_EQ(Left().GroupName, u"Team");
}

TEST_F(GroupSaveTest, ModifiedGroupIsRenamedClearedAndFilled) {
  Modify({{u"1", u"Anna", u"", u"", u"1", u""}});
  form->cmdOK.UserClicks();
  EXPECT_EQ(Written(),
            (std::vector<String>{Queries::LockGroup(u"5"), String(Queries::kRenameGroup),
                                 String(Queries::kClearMembers), String(Queries::kInsertMember)}));
  EXPECT_EQ(Left().GroupId, u"5");
}

TEST_F(GroupSaveTest, LocalGroupIsNotWrittenAndSavedAtOnce) {
  WorkOn(TypeOfGroup::LocalGroup);
  OpenToAdd();
  form->txtGroupName.UserTypes(u"Mine");
  form->cmdOK.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_TRUE(driver.Executed().empty());
  EXPECT_EQ(Left().GroupName, u"Mine");
  EXPECT_EQ(Left().GroupId, u"");
}

TEST_F(GroupSaveTest, LocalGroupIsModifiedWithoutAStatement) {
  WorkOn(TypeOfGroup::LocalGroup);
  OpenToModify(u"5", u"Mine");
  form->cmdOK.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_TRUE(driver.Executed().empty());
}

TEST_F(GroupSaveTest, GroupWithoutMembersIsOnlyCleared) {
  Modify({});
  form->cmdOK.UserClicks();
  EXPECT_EQ(Written(), (std::vector<String>{Queries::LockGroup(u"5"), String(Queries::kRenameGroup),
                                            String(Queries::kClearMembers)}));
}

TEST_F(GroupSaveTest, BarMovesWithEachMember) {
  Modify(Contacts(3));
  form->cmdOK.UserClicks();
  EXPECT_EQ(form->pbrSave.Max(), 3);
  EXPECT_EQ(form->pbrSave.Value(), 3);
  EXPECT_FALSE(form->pbrSave.Visible());
}

TEST_F(GroupSaveTest, GroupRowTakesTheLetterOfTheRowBeforeIt) {
  Modify({{u"1", u"Anna", u"", u"", u"1", u""},
          {u"9", u"Team", u"", u"", u"2", u""},
          {u"R1", u"Rita", u"", u"", u"3", u""},
          {u"8", u"Void", u"", u"", u"2", u""},
          {u"2", u"Bert", u"", u"", u"1", u""}});
  form->cmdOK.UserClicks();
  std::vector<Variant> letters;
  for (const auto& execution : Ran(Queries::kInsertMember)) letters.push_back(execution.Values[2]);
  EXPECT_EQ(letters, (std::vector<Variant>{String(u"S"), String(u"S"), String(u"R"), String(u"R"),
                                           String(u"S")}));
}

TEST_F(GroupSaveTest, GroupRowBeforeAnyContactHasNoLetter) {
  Modify({{u"9", u"Team", u"", u"", u"2", u""}});
  form->cmdOK.UserClicks();
  ASSERT_EQ(Ran(Queries::kInsertMember).size(), 1U);
  EXPECT_EQ(Ran(Queries::kInsertMember)[0].Values[2], Variant(String()));
}

TEST_F(GroupSaveTest, NameTakenBetweenCheckAndInsertKeepsTheDialogOpen) {
  driver.Fail(u"INSERT INTO SMS_ABGROUPS (", Error(ErrorNumber::IntegrityViolation, u"taken"));
  OpenToAdd();
  form->txtGroupName.UserTypes(u"Team");
  form->cmdOK.UserClicks();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(ErrorsLogged(kSaveContext), 1);
  EXPECT_TRUE(Ran(u"DELETE").empty());
  EXPECT_FALSE(form->Result().Unfinished);
  EXPECT_TRUE(form->lblSave.Visible());
  EXPECT_EQ(form->lblSave.Caption(), u"The group could not be saved.");
  EXPECT_FALSE(form->pbrSave.Visible());
}

TEST_F(GroupSaveTest, SaveThatFailsHalfWayIsFinishedByTheNextOk) {
  Candidates({{u"1", u"Anna", u"", u"", u"1", u""}});
  OpenToAdd();
  ASSERT_TRUE(Complete());
  form->cmdSelectAll.UserClicks();
  form->txtGroupName.UserTypes(u"Team");
  driver.Fail(Queries::kInsertMember, Error(ErrorNumber::DriverFailure, u"line lost"));
  form->cmdOK.UserClicks();
  ASSERT_TRUE(form->IsLoaded());
  driver.Changes(Queries::kInsertMember, 1);
  form->cmdOK.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Ran(Queries::kInsertGroup).size(), 1U);
  EXPECT_EQ(Ran(Queries::kRenameGroup).size(), 1U);
  EXPECT_EQ(Left().GroupId, u"77");
}

TEST_F(GroupSaveTest, GroupDeletedMeanwhileIsNotFilled) {
  constexpr std::int64_t kUnknown = -1;
  Modify({{u"1", u"Anna", u"", u"", u"1", u""}});
  form->txtGroupName.SetText(u"Crew");
  int failures = 0;
  for (const std::int64_t count : {std::int64_t{0}, kUnknown}) {
    driver.Changes(Queries::kRenameGroup, count);
    form->cmdOK.UserClicks();
    EXPECT_TRUE(form->IsLoaded());
    EXPECT_EQ(ErrorsLogged(kSaveContext), ++failures);
    EXPECT_TRUE(Ran(Queries::kInsertMember).empty());
  }
}

TEST_F(GroupSaveTest, EngineThatCountsNoUnchangedRowIsNotADeletedGroup) {
  Modify({});
  driver.Changes(Queries::kRenameGroup, 0);
  form->cmdOK.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
}

TEST_F(GroupSaveTest, MemberIdOfMoreThan50UnitsFailsTheSave) {
  Modify({{String(51, u'x'), u"Long", u"", u"", u"3", u""}});
  form->cmdOK.UserClicks();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(ErrorsLogged(kSaveContext), 1);
}

// Members that are not there yet.

TEST_F(GroupSaveTest, OkWhileTheMembersLoadSavesNothing) {
  MembersAre({{u"1", u"Anna", u"", u"", u"1", u""}});
  HoldFetches();
  OpenToModify(u"5", u"Team");
  form->cmdOK.UserClicks();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(screen.LastMessage().Text,
            u"The members of the group are still being loaded. Please wait.");
  EXPECT_TRUE(Written().empty());
  driver.OpenGate.Open();
  ASSERT_TRUE(Complete());
  form->cmdOK.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Ran(Queries::kInsertMember).size(), 1U);
}

TEST_F(GroupSaveTest, OkAfterTheMembersFailedSavesNothing) {
  MembersAre({{u"1", u"Anna", u"", u"", u"1", u""}});
  driver.FailAtEnd(u"(SELECT CONTACT_ID FROM SMS_ABGROUPMAPS",
                   Error(ErrorNumber::DriverFailure, u"line lost"));
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  form->cmdOK.UserClicks();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(screen.LastMessage().Text,
            u"The members of the group could not be loaded. Saving now would remove them from the "
            u"group.");
  EXPECT_TRUE(Written().empty());
}

TEST_F(GroupSaveTest, GroupOfAnUnknownDialectCannotLoseItsMembers) {
  session.DbType = u"MYSQL";
  OpenToModify(u"5", u"Team");
  form->cmdOK.UserClicks();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_TRUE(Written().empty());
}

struct SavesOnDatabase : tests::GroupsOnDatabase {};

TEST_F(SavesOnDatabase, NewGroupStandsInTheTablesInBothFamilies) {
  for (const StringView word : {u"SQL", u"ORACLE", u"sql"}) {
    session.DbType = word;
    const String name = u"\u0926\u0932 " + String(word) + (word == u"sql" ? u" again" : u"");
    OpenToAdd(u"1");
    ASSERT_TRUE(Complete());
    Take({1, 3});
    ASSERT_TRUE(Choose(u"Dealers"));
    Take({2});
    form->txtGroupName.UserTypes(name);
    form->cmdOK.UserClicks();
    ASSERT_FALSE(form->IsLoaded()) << ToUtf8(system.TextOf(u"log"));
    EXPECT_EQ(
        Query(u"SELECT NAME FROM SMS_ABGROUPS WHERE FOLDER_ID = 1 AND ID = " + Left().GroupId),
        name);
    EXPECT_EQ(MembershipsOf(Left().GroupId), u"1:S,3:S,R2:R");
  }
}

TEST_F(SavesOnDatabase, GroupCanBeSavedUnderItsOwnName) {
  OpenToModify(u"11", u"Team");
  ASSERT_TRUE(Complete());
  form->cmdOK.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(SavesOnDatabase, SqlFamilyDropsRemoteMembersWhenItSaves) {
  OpenToModify(u"11", u"Team");
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Column(form->vsfGroupContacts, u"ID"), (std::vector<String>{u"1", u"2"}));
  form->cmdOK.UserClicks();
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,2:S");
}

/// Databases compare the text with a contact's id as a number; on PostgreSQL the book's own
/// operator compares the digits.
TEST_F(SavesOnDatabase, MembersStayHoweverTheirIdsAreWritten) {
  ktrv::database::Connection connection(database.Surroundings());
  connection.Open(database.ConnectionString());
  const auto engine = connection.CurrentLink()->Get().EngineKind();
  if (engine == ktrv::database::Engine::PostgreSql) GTEST_SKIP() << "not the same there";
  for (const StringView id : {u"3", u" 03 ", u"3.0", u"3E0"}) {
    Run(u"DELETE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 12");
    Run(u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (12, '" +
        String(id) + u"', 'S')");
    OpenToModify(u"12", u"Void");
    ASSERT_TRUE(Complete());
    EXPECT_EQ(Column(form->vsfGroupContacts, u"NAME"), std::vector<String>{u"Cora"}) << ToUtf8(id);
    form->cmdOK.UserClicks();
    EXPECT_EQ(MembershipsOf(u"12"), u"3:S") << ToUtf8(id);
  }
}

TEST_F(SavesOnDatabase, OracleFamilyKeepsRemoteMembers) {
  session.DbType = u"ORACLE";
  OpenToModify(u"11", u"Team");
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Column(form->vsfGroupContacts, u"ID"), (std::vector<String>{u"1", u"2", u"R1"}));
  form->cmdOK.UserClicks();
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,2:S,R1:R");
}

TEST_F(SavesOnDatabase, GroupWithoutMembersKeepsNoMemberships) {
  OpenToModify(u"11", u"Team");
  ASSERT_TRUE(Complete());
  form->vsfGroupContacts.SelectAll();
  form->vsfGroupContacts.UserPresses(controls::KeyCode::Delete, 0);
  form->cmdOK.UserClicks();
  EXPECT_EQ(MembershipsOf(u"11"), u"");
}

TEST_F(SavesOnDatabase, NameOfAnotherGroupIsRefused) {
  OpenToModify(u"11", u"Team");
  ASSERT_TRUE(Complete());
  form->txtGroupName.SetText(u"Void");
  form->cmdOK.UserClicks();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(screen.Messages.size(), 1U);
}

TEST_F(SavesOnDatabase, DeletedGroupIsNotFilledWithOrphans) {
  OpenToModify(u"11", u"Team");
  ASSERT_TRUE(Complete());
  database.Run({u"DELETE FROM SMS_ABGROUPS WHERE ID = 11",
                u"DELETE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 11"});
  form->cmdOK.UserClicks();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(ErrorsLogged(kSaveContext), 1);
  EXPECT_EQ(MembershipsOf(u"11"), u"");
}

TEST_F(SavesOnDatabase, QuotesAndSemicolonsAreStoredAsTheyAre) {
  Run(u"INSERT INTO ZUL$CONTACTS VALUES ('O''B|;1', 'O''Brien; \"x\"|', '1', '', 'D')");
  OpenToAdd();
  ASSERT_TRUE(Complete());
  ASSERT_TRUE(Choose(u"Dealers"));
  form->cmdSelectAll.UserClicks();
  form->txtGroupName.UserTypes(u"it's; \"a\" | group");
  form->cmdOK.UserClicks();
  ASSERT_FALSE(form->IsLoaded());
  EXPECT_EQ(Query(u"SELECT NAME FROM SMS_ABGROUPS WHERE ID = " + Left().GroupId),
            u"it's; \"a\" | group");
  EXPECT_NE(MembershipsOf(Left().GroupId).find(u"O'B|;1:R"), String::npos);
}

}  // namespace
}  // namespace ktrv::forms
