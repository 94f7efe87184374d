#include <algorithm>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>

#include "tests/native/support/SqliteFile.h"
#include "tests/native/tool/ToolFixture.h"
#include "tool/PhoneNumber.h"

namespace ktrv::tests {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using tool::NotDialled;
using tool::NumberKey;

TEST(PhoneNumberTest, IsTheSameHoweverItIsWritten) {
  EXPECT_EQ(NumberKey(u"46", u"701740611"), NumberKey(u"", u"+46 (70) 174-06-11"));
  EXPECT_EQ(NumberKey(u"", u"0046701740611"), NumberKey(u"+46", u"701740611"));
  EXPECT_NE(NumberKey(u"46", u"701740611"), NumberKey(u"46", u"701740612"));
}

TEST(PhoneNumberTest, TellsLongNumbersApart) {
  EXPECT_NE(NumberKey(u"", u"1234567890123456781"), NumberKey(u"", u"1234567890123456790"));
  EXPECT_NE(NumberKey(u"1234567890", u"12345678901234567890"),
            NumberKey(u"1234567890", u"12345678901234567891"));
}

TEST(PhoneNumberTest, KnowsWhatCannotBeDialled) {
  EXPECT_THAT(NotDialled(u"+46 (70) 174-06.11"), IsEmpty());
  EXPECT_THAT(NotDialled(u"  "), Not(IsEmpty()));
  EXPECT_THAT(NotDialled(u"000"), Not(IsEmpty()));
  EXPECT_THAT(NotDialled(u"call me"), Not(IsEmpty()));
}

class CheckOnDatabaseTest : public ToolFixture {
 protected:
  void SetUp() override {
    Database.Run({
        u"INSERT INTO SMS_USERS (ID, NAME, ADMIN) VALUES (1, 'Admin', 1)",
        u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME) VALUES (1, 'S', 'Staff')",
        u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, REMOTE_CONTACTS_CATEGORY) "
        u"VALUES (2, 'R', 'Dealers', 'D')",
        u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, COUNTRYCODE, MOBILENO) "
        u"VALUES (1, 0, 'Anna', '46', '701740611')",
        u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, COUNTRYCODE, MOBILENO) "
        u"VALUES (2, 1, 'Sunil', '91', '9898098980')",
        u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (1, 'Night', 1)",
        u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (1, '2', 'S')",
        u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (1, 'C1', 'R')",
        u"INSERT INTO ZUL$CONTACTS_CATEGORY (CATEGORY) VALUES ('D')",
        u"INSERT INTO ZUL$CONTACTS (CODE, NAME, MOBILENO, EMAIL, CATEGORY) "
        u"VALUES ('C1', 'Coast', '555', 'c@d.example', 'D')",
    });
    removed_ = place_.File().string() + ".removed";
  }
  void TearDown() override { std::filesystem::remove(removed_); }

  /// The check finds this, and nothing else.
  void ExpectOnly(const std::string& code, const std::string& example) {
    EXPECT_EQ(Run({"--json", "check"}), 1) << Messages.str();
    EXPECT_THAT(Output(), AllOf(HasSubstr("\"code\": \"" + code + "\""), HasSubstr(example)));
    EXPECT_EQ(Output().find("\"code\""), Output().rfind("\"code\"")) << Output();
  }
  static bool IsOn(std::string_view engine) {
    const char* chosen = std::getenv("KTRV_TEST_ENGINE");
    return chosen && chosen == engine;
  }
  void DropIndexOfFolder() {
    Database.Run({IsOn("mariadb") ? u"DROP INDEX IX_SMS_ABCONTACTS_FOLDER ON SMS_ABCONTACTS"
                                  : u"DROP INDEX IX_SMS_ABCONTACTS_FOLDER"});
  }
  /// Leaves the table of memberships in the database, but not for the component to read.
  void HideMemberships() {
    if (IsOn("postgresql")) {
      return Database.Run(
          {u"CREATE SCHEMA ELSEWHERE", u"ALTER TABLE SMS_ABGROUPMAPS SET SCHEMA ELSEWHERE"});
    }
    Database.Run({u"CREATE TABLE HIDDEN (GROUP_ID INTEGER)", u"DROP TABLE SMS_ABGROUPMAPS",
                  u"CREATE VIEW SMS_ABGROUPMAPS AS SELECT * FROM HIDDEN", u"DROP TABLE HIDDEN"});
  }
  int Repair() { return Run({"check", "--repair", "--yes", "--removed", removed_}); }
  std::string Removed() const {
    std::ifstream file(removed_, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  SqliteFile place_;
  std::string removed_;
};

TEST_F(CheckOnDatabaseTest, FindsNothingInASoundBook) {
  EXPECT_EQ(Run({"check"}), 0) << Messages.str();
  EXPECT_EQ(Output(), "Nothing is wrong.\n");
  EXPECT_EQ(Run({"--json", "check"}), 0);
  EXPECT_EQ(Output(), "[]\n");
}

TEST_F(CheckOnDatabaseTest, FindsAndMovesAGroupWhoseFolderIsGone) {
  Database.Run({u"UPDATE SMS_ABGROUPS SET FOLDER_ID = 77"});
  ExpectOnly("group-in-missing-folder", "group 1 in folder 77");
  EXPECT_EQ(Repair(), 0) << Messages.str();
  EXPECT_THAT(Database.Rows(u"SELECT FOLDER_ID FROM SMS_ABGROUPS"), ElementsAre(u"0"));
  EXPECT_EQ(Removed(), "{\"table\": \"SMS_ABGROUPS\", \"ID\": \"1\", \"FOLDER_ID\": \"77\"}\n");
}

TEST_F(CheckOnDatabaseTest, FindsAndMovesAGroupInARemoteFolder) {
  Database.Run({u"UPDATE SMS_ABGROUPS SET FOLDER_ID = 2"});
  ExpectOnly("group-in-remote-folder", "group 1 in folder 2");
  EXPECT_EQ(Repair(), 0) << Messages.str();
}

TEST_F(CheckOnDatabaseTest, FindsAndMovesAContactWhoseFolderIsGone) {
  Database.Run({u"UPDATE SMS_ABCONTACTS SET FOLDER_ID = 77 WHERE ID = 2"});
  ExpectOnly("contact-in-missing-folder", "contact 2 in folder 77");
  EXPECT_EQ(Repair(), 0) << Messages.str();
  EXPECT_THAT(Database.Rows(u"SELECT FOLDER_ID FROM SMS_ABCONTACTS ORDER BY ID"),
              ElementsAre(u"0", u"0"));
}

TEST_F(CheckOnDatabaseTest, FindsAndRemovesAMembershipOfAMissingContact) {
  Database.Run(
      {u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) "
       u"VALUES (1, '99', 'S')"});
  ExpectOnly("membership-of-missing-contact", "group 1, contact 99");
  EXPECT_EQ(Repair(), 0) << Messages.str();
  EXPECT_THAT(Database.Rows(u"SELECT CONTACT_ID FROM SMS_ABGROUPMAPS ORDER BY CONTACT_ID"),
              ElementsAre(u"2", u"C1"));
  EXPECT_THAT(Removed(), HasSubstr("\"CONTACT_ID\": \"99\", \"CONTACT_TYPE\": \"S\"}\n"));
}

TEST_F(CheckOnDatabaseTest, KeepsEachOfEqualMemberships) {
  Database.Run(
      {u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (1, '99', 'S')",
       u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (1, '99', 'S')",
       u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (1, '98', 'S')"});
  EXPECT_EQ(Repair(), 0) << Messages.str();
  EXPECT_THAT(Messages.str(), HasSubstr("repaired membership-of-missing-contact: 3\n"));
  const std::string removed = Removed();
  EXPECT_EQ(std::count(removed.begin(), removed.end(), '\n'), 3) << removed;
  EXPECT_NE(removed.find("\"99\""), removed.rfind("\"99\"")) << removed;
}

TEST_F(CheckOnDatabaseTest, KeepsMembershipsThatTheDatabaseTakesForEqual) {
  Database.Run(
      {u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (9, 'ab', 'R')",
       u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (9, 'AB', 'R')"});
  EXPECT_EQ(Repair(), 0) << Messages.str();
  EXPECT_THAT(Removed(), AllOf(HasSubstr("\"ab\""), HasSubstr("\"AB\"")));
}

TEST_F(CheckOnDatabaseTest, FindsAndRemovesAMembershipOfAMissingGroup) {
  Database.Run(
      {u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) "
       u"VALUES (9, '1', 'S')"});
  ExpectOnly("membership-of-missing-group", "group 9, contact 1");
  EXPECT_EQ(Repair(), 0) << Messages.str();
}

TEST_F(CheckOnDatabaseTest, LeavesAMembershipOfAMissingRemoteContact) {
  Database.Run({u"DELETE FROM ZUL$CONTACTS"});
  ExpectOnly("membership-of-missing-remote-contact", "remote contact C1");
  EXPECT_EQ(Repair(), 1) << Messages.str();
  EXPECT_THAT(Database.Rows(u"SELECT COUNT(*) FROM SMS_ABGROUPMAPS"), ElementsAre(u"2"));
}

TEST_F(CheckOnDatabaseTest, FindsANumberThatCannotBeDialled) {
  Database.Run({u"UPDATE SMS_ABCONTACTS SET MOBILENO = 'none' WHERE ID = 1"});
  ExpectOnly("undialable-number", "contact 1: \\\"none\\\"");
}

TEST_F(CheckOnDatabaseTest, FindsTheSameNumberWrittenDifferently) {
  Database.Run(
      {u"UPDATE SMS_ABCONTACTS SET COUNTRYCODE = NULL, MOBILENO = '0046 701-740611' "
       u"WHERE ID = 2"});
  ExpectOnly("same-number", "contact 2 as contact 1");
}

TEST_F(CheckOnDatabaseTest, FindsAnIndexThatIsMissingAndCreatesIt) {
  DropIndexOfFolder();
  ExpectOnly("missing-index", "SMS_ABCONTACTS.FOLDER_ID");
  EXPECT_EQ(Repair(), 0) << Messages.str();
}

TEST_F(CheckOnDatabaseTest, FindsATableThatIsMissingAndCreatesIt) {
  Database.Run({u"DROP TABLE SMS_ABGROUPMAPS"});
  ExpectOnly("missing-table", "SMS_ABGROUPMAPS");
  EXPECT_EQ(Repair(), 0) << Messages.str();
  EXPECT_THAT(Database.Rows(u"SELECT COUNT(*) FROM SMS_ABGROUPMAPS"), ElementsAre(u"0"));
}

TEST_F(CheckOnDatabaseTest, CreatesWithATableWhatItsQueriesNeed) {
  Database.Run({u"DROP TABLE SMS_ABGROUPMAPS"});
  if (IsOn("postgresql")) {
    Database.Run({u"DROP FUNCTION SMS_AB_SAME_ID(INTEGER, TEXT) CASCADE",
                  u"DROP FUNCTION SMS_AB_SAME_ID(TEXT, INTEGER) CASCADE"});
  }
  EXPECT_EQ(Repair(), 0) << Messages.str();
  EXPECT_EQ(Run({"export", "--group", "Night"}), 0) << Messages.str();
}

TEST_F(CheckOnDatabaseTest, LeavesATableThatIsThereButCannotBeRead) {
  HideMemberships();
  ExpectOnly("missing-table", "\"repair\": null");
  EXPECT_EQ(Repair(), 1) << Messages.str();
  EXPECT_THAT(Messages.str(), Not(HasSubstr("repaired")));
}

TEST_F(CheckOnDatabaseTest, KnowsAContactHoweverItsIdIsWritten) {
  Database.Run(
      {u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (1, '1 ', 'S')",
       u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (1, '1.0', 'S')",
       u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (1, '2x', 'S')"});
  EXPECT_EQ(Run({"check"}), 0) << Output();
}

TEST_F(CheckOnDatabaseTest, LeavesWhatIsInAFolderOfAnotherType) {
  Database.Run({u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME) VALUES (3, 'L', 'Mine')",
                u"UPDATE SMS_ABCONTACTS SET FOLDER_ID = 3 WHERE ID = 2"});
  ExpectOnly("contact-in-other-folder", "contact 2 in folder 3");
  Database.Run({u"UPDATE SMS_ABGROUPS SET FOLDER_ID = 3"});
  EXPECT_EQ(Repair(), 1) << Messages.str();
  EXPECT_THAT(Output(), HasSubstr("group 1 in folder 3"));
  EXPECT_THAT(Database.Rows(u"SELECT FOLDER_ID FROM SMS_ABCONTACTS ORDER BY ID"),
              ElementsAre(u"0", u"3"));
  EXPECT_THAT(Database.Rows(u"SELECT FOLDER_ID FROM SMS_ABGROUPS"), ElementsAre(u"3"));
}

TEST_F(CheckOnDatabaseTest, KnowsAFolderInWhateverCaseItsTypeIs) {
  Database.Run({u"UPDATE SMS_ABFOLDERS SET TYPE = 's' WHERE ID = 1"});
  EXPECT_EQ(Run({"check"}), 0) << Output();
}

TEST_F(CheckOnDatabaseTest, TellsWhatWasRepairedBeforeAFailure) {
  Database.Run({u"UPDATE SMS_ABGROUPS SET FOLDER_ID = 77"});
  DropIndexOfFolder();
  Database.Run({u"CREATE INDEX IX_SMS_ABCONTACTS_FOLDER ON SMS_ABCONTACTS (LNAME)"});
  EXPECT_EQ(Repair(), 1);
  EXPECT_THAT(Messages.str(), HasSubstr("repaired group-in-missing-folder: 1\n"));
  EXPECT_THAT(Messages.str(), HasSubstr("the former rows are in"));
  EXPECT_THAT(Database.Rows(u"SELECT FOLDER_ID FROM SMS_ABGROUPS"), ElementsAre(u"0"));
}

TEST_F(CheckOnDatabaseTest, FindsAColumnThatIsMissing) {
  Database.Run({u"ALTER TABLE SMS_ABCONTACTS DROP COLUMN HOBBY"});
  ExpectOnly("missing-column", "SMS_ABCONTACTS.HOBBY");
}

TEST_F(CheckOnDatabaseTest, FindsThatThereIsNoAdministrator) {
  Database.Run({u"UPDATE SMS_USERS SET DISABLED = 1"});
  ExpectOnly("no-administrator", "is an administrator");
}

TEST_F(CheckOnDatabaseTest, DoesNotRepairWithoutBeingTold) {
  Database.Run({u"UPDATE SMS_ABGROUPS SET FOLDER_ID = 77"});
  EXPECT_EQ(Run({"check", "--repair"}), 2);
  EXPECT_THAT(Messages.str(), HasSubstr("needs --yes"));
  EXPECT_THAT(Database.Rows(u"SELECT FOLDER_ID FROM SMS_ABGROUPS"), ElementsAre(u"77"));
}

TEST_F(CheckOnDatabaseTest, AsksSomebodyWhoIsThere) {
  Database.Run({u"UPDATE SMS_ABGROUPS SET FOLDER_ID = 77"});
  IsInteractive = true;
  In.str("n\n");
  EXPECT_EQ(Run({"check", "--repair", "--removed", removed_}), 1);
  EXPECT_THAT(Database.Rows(u"SELECT FOLDER_ID FROM SMS_ABGROUPS"), ElementsAre(u"77"));
  In.clear();
  In.str("y\n");
  EXPECT_EQ(Run({"check", "--repair", "--removed", removed_}), 0) << Messages.str();
  EXPECT_THAT(Database.Rows(u"SELECT FOLDER_ID FROM SMS_ABGROUPS"), ElementsAre(u"0"));
}

TEST_F(CheckOnDatabaseTest, RepairsNothingIfTheFileCannotBeWritten) {
  Database.Run({u"UPDATE SMS_ABGROUPS SET FOLDER_ID = 77"});
  EXPECT_EQ(Run({"check", "--repair", "--yes", "--removed", "/no/such/folder/x"}), 1);
  EXPECT_THAT(Messages.str(), HasSubstr("nothing was repaired"));
  EXPECT_THAT(Database.Rows(u"SELECT FOLDER_ID FROM SMS_ABGROUPS"), ElementsAre(u"77"));
}

TEST_F(CheckOnDatabaseTest, LeavesWhatAnotherUserHasMendedMeanwhile) {
  if (!IsOn("mariadb") && !IsOn("postgresql")) GTEST_SKIP() << "others cannot write meanwhile";
  Database.Run({u"UPDATE SMS_ABGROUPS SET FOLDER_ID = 77"});
  Driver.BeforeExecute = [this](StringView text) {
    if (!text.starts_with(u"UPDATE SMS_ABGROUPS")) return;
    Driver.BeforeExecute = nullptr;
    Database.Run({u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME) VALUES (77, 'S', 'Back')"});
  };
  std::string connection = ToUtf8(Database.ConnectionString());
  // MariaDB then refuses to lock rows that changed since the transaction's first query.
  if (IsOn("mariadb")) connection += ";INITSTMT={SET SESSION innodb_snapshot_isolation=ON}";
  EXPECT_EQ(RunBare({"--connect", connection, "check", "--repair", "--yes", "--removed", removed_}),
            0)
      << Messages.str();
  EXPECT_FALSE(Driver.BeforeExecute);
  EXPECT_THAT(Database.Rows(u"SELECT FOLDER_ID FROM SMS_ABGROUPS"), ElementsAre(u"77"));
}

TEST_F(CheckOnDatabaseTest, KeepsTheFormerRowsIfTheTablesDoNotRollBack) {
  if (!IsOn("mariadb")) GTEST_SKIP() << "only MariaDB has such tables";
  Database.Run({u"ALTER TABLE SMS_ABGROUPS ENGINE = MyISAM",
                u"UPDATE SMS_ABGROUPS SET FOLDER_ID = 77",
                u"UPDATE SMS_ABCONTACTS SET FOLDER_ID = 78 WHERE ID = 2",
                u"CREATE TRIGGER KEEP BEFORE UPDATE ON SMS_ABCONTACTS FOR EACH ROW "
                u"SIGNAL SQLSTATE '45000' SET MESSAGE_TEXT = 'kept'"});
  EXPECT_EQ(Repair(), 1);
  EXPECT_THAT(Database.Rows(u"SELECT FOLDER_ID FROM SMS_ABGROUPS"), ElementsAre(u"0"));
  EXPECT_THAT(Removed(), HasSubstr("\"FOLDER_ID\": \"77\"}"));
  EXPECT_THAT(Messages.str(),
              AllOf(HasSubstr("the repair may be stored in part\nthe former rows are in "),
                    HasSubstr("kept")));
}

TEST_F(CheckOnDatabaseTest, TellsTheFormerRowsIfTheTablesDoNotRollBack) {
  const std::string full = "/dev/full";
  if (!std::filesystem::exists(full)) GTEST_SKIP() << "no " << full;
  if (!IsOn("mariadb")) GTEST_SKIP() << "only MariaDB has such tables";
  Database.Run(
      {u"ALTER TABLE SMS_ABGROUPS ENGINE = MyISAM", u"UPDATE SMS_ABGROUPS SET FOLDER_ID = 77"});
  EXPECT_EQ(Run({"check", "--repair", "--yes", "--removed", full}), 1);
  EXPECT_THAT(Messages.str(),
              AllOf(HasSubstr("\"FOLDER_ID\": \"77\"}\n"),
                    HasSubstr("/dev/full cannot be written; the repair may not be undone")));
}

using CheckTest = CheckOnDatabaseTest;

TEST_F(CheckTest, FindsANameThatIsTooLong) {
  Database.Run(
      {u"UPDATE SMS_ABCONTACTS SET LNAME = "
       u"'aaaaaaaaaabbbbbbbbbbccccccccccddddddddddeeeeeeeeee1' WHERE ID = 1"});
  ExpectOnly("long-name", "contact 1: 51 characters");
}

TEST_F(CheckTest, RepairsAllOrNothing) {
  Database.Run({u"UPDATE SMS_ABGROUPS SET FOLDER_ID = 77",
                u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) "
                u"VALUES (1, '99', 'S')",
                u"CREATE TRIGGER KEEP_MAPS BEFORE DELETE ON SMS_ABGROUPMAPS "
                u"BEGIN SELECT RAISE(ABORT, 'kept'); END"});
  EXPECT_EQ(Repair(), 1);
  EXPECT_THAT(Messages.str(), HasSubstr("kept"));
  EXPECT_THAT(Database.Rows(u"SELECT FOLDER_ID FROM SMS_ABGROUPS"), ElementsAre(u"77"));
  EXPECT_THAT(Removed(), IsEmpty());
}

TEST_F(CheckTest, LeavesWhatSomebodySavedSinceItWasRead) {
  Database.Run({u"UPDATE SMS_ABGROUPS SET FOLDER_ID = 77",
                u"UPDATE SMS_ABCONTACTS SET FOLDER_ID = 78 WHERE ID = 2",
                u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) "
                u"VALUES (1, '99', 'S')",
                u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) "
                u"VALUES (9, '1', 'S')",
                u"CREATE TRIGGER SAVED AFTER UPDATE ON SMS_ABGROUPS BEGIN "
                u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME) VALUES (78, 'S', 'New'); "
                u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MOBILENO) "
                u"VALUES (99, 0, 'New', '5551'); "
                u"INSERT INTO SMS_ABGROUPS (ID, NAME) VALUES (9, 'New'); END"});
  EXPECT_EQ(Repair(), 0) << Messages.str();
  EXPECT_THAT(Database.Rows(u"SELECT FOLDER_ID FROM SMS_ABCONTACTS WHERE ID = 2"),
              ElementsAre(u"78"));
  EXPECT_THAT(Database.Rows(u"SELECT COUNT(*) FROM SMS_ABGROUPMAPS"), ElementsAre(u"4"));
  EXPECT_EQ(Removed(), "{\"table\": \"SMS_ABGROUPS\", \"ID\": \"1\", \"FOLDER_ID\": \"77\"}\n");
  EXPECT_THAT(Messages.str(), HasSubstr("repaired membership-of-missing-contact: 0\n"));
}

TEST_F(CheckTest, RepairsRowsWithNulls) {
  Database.Run({u"DROP TABLE SMS_ABGROUPMAPS", u"DROP TABLE SMS_ABGROUPS",
                u"CREATE TABLE SMS_ABGROUPS (ID INTEGER PRIMARY KEY AUTOINCREMENT, NAME TEXT, "
                u"FOLDER_ID INTEGER)",
                u"CREATE TABLE SMS_ABGROUPMAPS (GROUP_ID INTEGER, CONTACT_ID TEXT, "
                u"CONTACT_TYPE TEXT)",
                u"CREATE INDEX G1 ON SMS_ABGROUPS (NAME)",
                u"CREATE INDEX G2 ON SMS_ABGROUPS (FOLDER_ID)",
                u"CREATE INDEX M1 ON SMS_ABGROUPMAPS (GROUP_ID)",
                u"CREATE INDEX M2 ON SMS_ABGROUPMAPS (CONTACT_ID)",
                u"INSERT INTO SMS_ABGROUPS (ID, NAME) VALUES (1, 'Night')",
                u"INSERT INTO SMS_ABGROUPMAPS VALUES (9, '1', NULL)",
                u"INSERT INTO SMS_ABGROUPMAPS VALUES (9, NULL, 'S')"});
  EXPECT_EQ(Repair(), 0) << Messages.str();
  EXPECT_THAT(Messages.str(), AllOf(HasSubstr("repaired group-in-missing-folder: 1\n"),
                                    HasSubstr("repaired membership-of-missing-group: 2\n")));
  EXPECT_THAT(Removed(),
              AllOf(HasSubstr("\"FOLDER_ID\": null"), HasSubstr("\"CONTACT_TYPE\": null"),
                    HasSubstr("\"CONTACT_ID\": null")));
}

TEST_F(CheckTest, LeavesToTheDatabaseWhatNoIdCanBe) {
  Database.Run(
      {u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) "
       u"VALUES (1, '4670174000', 'S')",
       u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) "
       u"VALUES (4670174000, '1', 'S')",
       u"UPDATE SMS_ABCONTACTS SET FOLDER_ID = 4670174000 WHERE ID = 1",
       u"UPDATE SMS_ABGROUPS SET FOLDER_ID = 77"});
  EXPECT_EQ(Repair(), 0) << Messages.str();
  EXPECT_THAT(Messages.str(), HasSubstr("repaired group-in-missing-folder: 1\n"));
  EXPECT_THAT(Database.Rows(u"SELECT COUNT(*) FROM SMS_ABGROUPMAPS"), ElementsAre(u"4"));
}

TEST_F(CheckTest, RemovesMembershipsWhoseTextsAreTooLong) {
  Database.Run(
      {u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) "
       u"VALUES (1, '99', 'S ')",
       u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) "
       u"VALUES (9, '123456789 123456789 123456789 123456789 123456789 1', 'RR')"});
  EXPECT_EQ(Repair(), 0) << Messages.str();
  EXPECT_THAT(Removed(), AllOf(HasSubstr("\"S \""), HasSubstr("\"RR\"")));
  EXPECT_THAT(Database.Rows(u"SELECT COUNT(*) FROM SMS_ABGROUPMAPS"), ElementsAre(u"2"));
}

TEST_F(CheckTest, TellsTheFormerRowsIfTheyCannotBeKept) {
  const std::string full = "/dev/full";  // takes nothing
  if (!std::filesystem::exists(full)) GTEST_SKIP() << "no " << full;
  Driver.HasTransactions = false;
  Database.Run({u"UPDATE SMS_ABGROUPS SET FOLDER_ID = 77"});
  EXPECT_EQ(Run({"check", "--repair", "--yes", "--removed", full}), 1);
  EXPECT_THAT(Database.Rows(u"SELECT FOLDER_ID FROM SMS_ABGROUPS"), ElementsAre(u"0"));
  EXPECT_THAT(
      Messages.str(),
      AllOf(HasSubstr("{\"table\": \"SMS_ABGROUPS\", \"ID\": \"1\", \"FOLDER_ID\": \"77\"}\n"),
            HasSubstr("/dev/full cannot be written; the repair may not be undone")));
}

TEST_F(CheckTest, TellsTheFormerRowsIfTheRepairFailsToo) {
  const std::string full = "/dev/full";
  if (!std::filesystem::exists(full)) GTEST_SKIP() << "no " << full;
  Driver.HasTransactions = false;
  Database.Run({u"UPDATE SMS_ABGROUPS SET FOLDER_ID = 77",
                u"UPDATE SMS_ABCONTACTS SET FOLDER_ID = 78 WHERE ID = 2",
                u"CREATE TRIGGER KEEP BEFORE UPDATE ON SMS_ABCONTACTS "
                u"BEGIN SELECT RAISE(ABORT, 'kept'); END"});
  EXPECT_EQ(Run({"check", "--repair", "--yes", "--removed", full}), 1);
  EXPECT_THAT(Messages.str(), AllOf(HasSubstr("\"FOLDER_ID\": \"77\"}\n"), Not(HasSubstr("\"78\"")),
                                    HasSubstr("kept")));
}

TEST_F(CheckTest, RepairsNothingIfTheFileIsFull) {
  const std::string full = "/dev/full";
  if (!std::filesystem::exists(full)) GTEST_SKIP() << "no " << full;
  Database.Run({u"UPDATE SMS_ABGROUPS SET FOLDER_ID = 77"});
  EXPECT_EQ(Run({"check", "--repair", "--yes", "--removed", full}), 1);
  EXPECT_THAT(Messages.str(), HasSubstr("nothing was repaired"));
  EXPECT_THAT(Database.Rows(u"SELECT FOLDER_ID FROM SMS_ABGROUPS"), ElementsAre(u"77"));
}

TEST_F(CheckTest, AppendsFormerRowsOnALineOfTheirOwn) {
  std::ofstream(removed_, std::ios::binary) << "cut off";
  Database.Run({u"UPDATE SMS_ABGROUPS SET FOLDER_ID = 77"});
  EXPECT_EQ(Repair(), 0) << Messages.str();
  EXPECT_THAT(Removed(), HasSubstr("cut off\n{"));
}

}  // namespace
}  // namespace ktrv::tests
