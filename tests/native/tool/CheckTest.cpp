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
  const char* engine = std::getenv("KTRV_TEST_ENGINE");
  const bool onTable = engine && std::string_view(engine) == "mariadb";
  Database.Run({onTable ? u"DROP INDEX IX_SMS_ABCONTACTS_FOLDER ON SMS_ABCONTACTS"
                        : u"DROP INDEX IX_SMS_ABCONTACTS_FOLDER"});
  ExpectOnly("missing-index", "SMS_ABCONTACTS.FOLDER_ID");
  EXPECT_EQ(Repair(), 0) << Messages.str();
}

TEST_F(CheckOnDatabaseTest, FindsATableThatIsMissingAndCreatesIt) {
  Database.Run({u"DROP TABLE SMS_ABGROUPMAPS"});
  ExpectOnly("missing-table", "SMS_ABGROUPMAPS");
  EXPECT_EQ(Repair(), 0) << Messages.str();
  EXPECT_THAT(Database.Rows(u"SELECT COUNT(*) FROM SMS_ABGROUPMAPS"), ElementsAre(u"0"));
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
}

}  // namespace
}  // namespace ktrv::tests
