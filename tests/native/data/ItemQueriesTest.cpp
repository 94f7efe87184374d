#include "data/ItemQueries.h"

#include <gtest/gtest.h>

#include "common/Error.h"

// The texts stand here a second time: they are what administrators see in their servers' logs.
namespace ktrv::data::ItemQueries {
namespace {

TEST(ItemQueries, AMembershipIsInsertedByTheOrderOfTheColumns) {
  EXPECT_EQ(InsertMember(u"6", u"41"), u"INSERT INTO SMS_ABGROUPMAPS VALUES(6,41, 'S')");
}

TEST(ItemQueries, AGroupGoesWithItsMemberships) {
  EXPECT_EQ(DeleteGroup(u"6"), u"DELETE FROM SMS_ABGROUPS WHERE ID = 6");
  EXPECT_EQ(DeleteMembers(u"6"), u"DELETE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 6");
}

TEST(ItemQueries, AFolderGoesWithItsContacts) {
  EXPECT_EQ(DeleteFolderContacts(u"7"), u"DELETE FROM SMS_ABCONTACTS WHERE FOLDER_ID = 7");
  EXPECT_EQ(DeleteFolder(u"7"), u"DELETE FROM SMS_ABFOLDERS WHERE ID = 7");
}

TEST(ItemQueries, AFoldersGroupsAreLookedUp) {
  EXPECT_EQ(GroupsInFolder(u"7"), u"SELECT ID FROM SMS_ABGROUPS WHERE FOLDER_ID = 7");
}

TEST(ItemQueries, AContactGoesWithItsMembershipsWhoseIdIsText) {
  EXPECT_EQ(DeleteContact(u"41"), u"DELETE FROM SMS_ABCONTACTS WHERE ID = 41");
  EXPECT_EQ(DeleteMemberships(u"41"), u"DELETE FROM SMS_ABGROUPMAPS WHERE CONTACT_ID = '41'");
}

TEST(ItemQueries, OnlyDigitsBecomePartOfAStatement) {
  for (const StringView id : {u"", u"1 OR 1=1", u"-1", u"1'--", u"D1", u" 1"}) {
    EXPECT_THROW(DeleteGroup(id), Error);
    EXPECT_THROW(DeleteMembers(id), Error);
    EXPECT_THROW(DeleteFolderContacts(id), Error);
    EXPECT_THROW(DeleteFolder(id), Error);
    EXPECT_THROW(GroupsInFolder(id), Error);
    EXPECT_THROW(DeleteContact(id), Error);
    EXPECT_THROW(DeleteMemberships(id), Error);
    EXPECT_THROW(InsertMember(id, u"1"), Error);
    EXPECT_THROW(InsertMember(u"1", id), Error);
  }
}

}  // namespace
}  // namespace ktrv::data::ItemQueries
