#include <gmock/gmock.h>

#include "tests/native/tool/ToolFixture.h"

namespace ktrv::tests {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class ListingOnDatabaseTest : public ToolFixture {
 protected:
  void SetUp() override {
    Database.Run({
        u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME) VALUES (1, 'S', 'Staff')",
        u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, REMOTE_CONTACTS_CATEGORY) "
        u"VALUES (2, 'R', 'Dealers', 'D')",
        u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO) "
        u"VALUES (1, 0, '\u00C5sa', '', '\u00D6berg', '46', '701')",
        u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO) "
        u"VALUES (2, 1, 'Sunil', 'K', 'Patel', '91', '989')",
        u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (1, 'Night', 0)",
        u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (2, 'Day', 1)",
        u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (1, '2', 'S')",
        u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (1, 'C1', 'R')",
        u"INSERT INTO ZUL$CONTACTS_CATEGORY (CATEGORY) VALUES ('D')",
        u"INSERT INTO ZUL$CONTACTS (CODE, NAME, MOBILENO, EMAIL, CATEGORY) "
        u"VALUES ('C1', 'Coast', '555', 'c@d.example', 'D')",
    });
  }
};

TEST_F(ListingOnDatabaseTest, ListsWhatStandsOutsideAnyFolder) {
  ASSERT_EQ(Run({"list"}), 0) << Messages.str();
  EXPECT_THAT(Output(), AllOf(HasSubstr("contact  1   \u00C5sa  \u00D6berg"), HasSubstr("46 701"),
                              HasSubstr("group    1   Night")));
  EXPECT_THAT(Output(), Not(HasSubstr("Sunil")));
}

TEST_F(ListingOnDatabaseTest, ListsAFolderByItsName) {
  ASSERT_EQ(Run({"list", "--folder", "Staff"}), 0) << Messages.str();
  EXPECT_THAT(Output(), AllOf(HasSubstr("Sunil K Patel"), HasSubstr("Day")));
}

TEST_F(ListingOnDatabaseTest, ListsAFolderByItsIdInTheOtherDialect) {
  ASSERT_EQ(Run({"--dialect", "ORACLE", "list", "--folder", "#1"}), 0) << Messages.str();
  EXPECT_THAT(Output(), HasSubstr("Sunil K Patel"));
}

TEST_F(ListingOnDatabaseTest, ListsRemoteContacts) {
  ASSERT_EQ(Run({"list", "--folder", "Dealers"}), 0) << Messages.str();
  EXPECT_THAT(Output(), HasSubstr("remote  C1  Coast"));
}

TEST_F(ListingOnDatabaseTest, TellsThatThereIsNoSuchFolder) {
  EXPECT_EQ(Run({"list", "--folder", "Nowhere"}), 1);
  EXPECT_THAT(Messages.str(), HasSubstr("no folder with the name \"Nowhere\""));
}

TEST_F(ListingOnDatabaseTest, TellsThatANameIsThereTwice) {
  Database.Run({u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME) VALUES (3, 'S', 'Staff')"});
  EXPECT_EQ(Run({"list", "--folder", "Staff"}), 1);
  EXPECT_THAT(Messages.str(), HasSubstr("more than one"));
}

TEST_F(ListingOnDatabaseTest, CountsInFolders) {
  ASSERT_EQ(Run({"--json", "folders"}), 0) << Messages.str();
  EXPECT_EQ(Output(),
            "[\n"
            "{\"id\": \"1\", \"name\": \"Staff\", \"kind\": \"shared\", \"category\": null, "
            "\"contacts\": \"1\", \"groups\": \"1\"},\n"
            "{\"id\": \"2\", \"name\": \"Dealers\", \"kind\": \"remote\", \"category\": \"D\", "
            "\"contacts\": \"1\", \"groups\": \"0\"}\n"
            "]\n");
}

TEST_F(ListingOnDatabaseTest, CountsMembersOfGroups) {
  ASSERT_EQ(Run({"--json", "groups"}), 0) << Messages.str();
  EXPECT_EQ(Output(),
            "[\n"
            "{\"id\": \"1\", \"name\": \"Night\", \"folder\": null, \"members\": \"2\"},\n"
            "{\"id\": \"2\", \"name\": \"Day\", \"folder\": \"Staff\", \"members\": \"0\"}\n"
            "]\n");
}

TEST_F(ListingOnDatabaseTest, ListsMembers) {
  ASSERT_EQ(Run({"members", "Night"}), 0) << Messages.str();
  EXPECT_THAT(Output(), AllOf(HasSubstr("Sunil K Patel"), HasSubstr("Coast")));
}

TEST_F(ListingOnDatabaseTest, ExpandsAGroupToItsRecipients) {
  ASSERT_EQ(Run({"--json", "members", "Night", "--expand"}), 0) << Messages.str();
  EXPECT_THAT(Output(), HasSubstr("{\"id\": \"2\", \"name\": \"Sunil\", \"mobileno\": \"989\", "
                                  "\"countrycode\": \"91\"}"));
}

TEST_F(ListingOnDatabaseTest, ShowsAContactWithItsNulls) {
  ASSERT_EQ(Run({"--json", "show", "2"}), 0) << Messages.str();
  EXPECT_THAT(Output(), AllOf(HasSubstr("\"fname\": \"Sunil\""), HasSubstr("\"email\": null")));
}

TEST_F(ListingOnDatabaseTest, TellsThatThereIsNoSuchContact) {
  EXPECT_EQ(Run({"show", "99"}), 1);
  EXPECT_EQ(Run({"show", "1 OR 1=1"}), 1);
}

TEST_F(ListingOnDatabaseTest, AnEmptyListIsAnEmptyArray) {
  Database.Run({u"DELETE FROM SMS_ABGROUPS"});
  ASSERT_EQ(Run({"--json", "groups"}), 0);
  EXPECT_EQ(Output(), "[]\n");
}

}  // namespace
}  // namespace ktrv::tests
