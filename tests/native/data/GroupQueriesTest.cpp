#include "data/GroupQueries.h"

#include <gtest/gtest.h>

#include "common/Error.h"

// The texts stand here a second time, whole and with the ids filled in: they are what
// administrators see in their servers' statement logs, and nobody may change a blank in them by
// accident.
namespace ktrv::data::GroupQueries {
namespace {

TEST(GroupQueries, OfferThePickerContactsAndGroupsInTheSqlFamily) {
  EXPECT_EQ(SharedCandidates(Dialect::Sql, Purpose::PickRecipients, u"7"),
            u"SELECT ID , FNAME , MOBILENO , COUNTRYCODE , 1 ,   (LTRIM(ISNULL(COUNTRYCODE , '') +"
            u" ' ') + ISNULL(MOBILENO,'')) AS MOBILE_DISPLAY FROM SMS_ABCONTACTS WHERE FOLDER_ID ="
            u" 7 UNION SELECT ID , NAME , '' , '' , 2  , '' AS MOBILE_DISPLAY FROM  SMS_ABGROUPS W"
            u"HERE FOLDER_ID = 7");
}

TEST(GroupQueries, OfferThePickerContactsAndGroupsInTheOracleFamilyWithOneBlankFewer) {
  EXPECT_EQ(SharedCandidates(Dialect::Oracle, Purpose::PickRecipients, u"7"),
            u"SELECT ID , FNAME , MOBILENO , COUNTRYCODE , 1 ,   (LTRIM(NVL(COUNTRYCODE , '') || '"
            u" ') || NVL(MOBILENO, '')) AS MOBILE_DISPLAY FROM SMS_ABCONTACTS WHERE FOLDER_ID = 7 "
            u"UNION SELECT ID , NAME , '' , '' , 2 , '' AS MOBILE_DISPLAY FROM  SMS_ABGROUPS WHERE"
            u" FOLDER_ID = 7");
}

TEST(GroupQueries, OfferTheEditorNoGroupsInTheSqlFamily) {
  EXPECT_EQ(SharedCandidates(Dialect::Sql, Purpose::EditGroup, u"0"),
            u"SELECT ID , FNAME , MOBILENO , COUNTRYCODE , 1 ,   (LTRIM(ISNULL(COUNTRYCODE , '') +"
            u" ' ') + ISNULL(MOBILENO,'')) AS MOBILE_DISPLAY FROM SMS_ABCONTACTS WHERE FOLDER_ID ="
            u" 0");
}

TEST(GroupQueries, OfferTheEditorNoGroupsInTheOracleFamily) {
  EXPECT_EQ(SharedCandidates(Dialect::Oracle, Purpose::EditGroup, u"0"),
            u"SELECT ID , FNAME , MOBILENO , COUNTRYCODE, 1 ,   (LTRIM(NVL(COUNTRYCODE , '') || ' "
            u"') || NVL(MOBILENO, '')) AS MOBILE_DISPLAY FROM SMS_ABCONTACTS WHERE FOLDER_ID = 0");
}

TEST(GroupQueries, OfferRemoteContactsInThreeSpellings) {
  const String rest =
      u"MOBILENO AS MOBILE_DISPLAY FROM V_ZUL$REMOTE_CONTACTS WHERE CATEGORY = (SELECT "
      u"REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS WHERE ID = 3)";
  EXPECT_EQ(RemoteCandidates(Dialect::Sql, Purpose::EditGroup, u"3"),
            u"SELECT CODE AS ID, NAME, MOBILENO, '' AS COUNTRYCODE , 3, " + rest);
  EXPECT_EQ(RemoteCandidates(Dialect::Oracle, Purpose::EditGroup, u"3"),
            u"SELECT CODE AS ID, NAME, MOBILENO, '' AS COUNTRYCODE, 3, " + rest);
  const String picker = u"SELECT CODE AS ID, NAME, MOBILENO,'' AS COUNTRYCODE, 3, " + rest;
  EXPECT_EQ(RemoteCandidates(Dialect::Sql, Purpose::PickRecipients, u"3"), picker);
  EXPECT_EQ(RemoteCandidates(Dialect::Oracle, Purpose::PickRecipients, u"3"), picker);
}

TEST(GroupQueries, ListMembersInTheSqlFamilyWithoutRemoteOnes) {
  EXPECT_EQ(Members(Dialect::Sql, u"12"),
            u"SELECT ID , FNAME , MOBILENO , COUNTRYCODE , 1 ,   (LTRIM(ISNULL(COUNTRYCODE , '') +"
            u" ' ') + ISNULL(MOBILENO,'')) AS MOBILE_DISPLAY FROM SMS_ABCONTACTS WHERE  ID IN (SEL"
            u"ECT CONTACT_ID FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 12)");
}

TEST(GroupQueries, ListMembersInTheOracleFamilyWithRemoteOnes) {
  EXPECT_EQ(Members(Dialect::Oracle, u"12"),
            u"SELECT TO_CHAR(ID) AS ID, FNAME, MOBILENO, COUNTRYCODE, 1 AS CONTACTTYPE, (LTRIM(NVL"
            u"(COUNTRYCODE ,'') || ' ') || NVL(MOBILENO,'')) AS MOBILEDISPLAY FROM SMS_ABCONTACTS "
            u"C, SMS_ABGROUPMAPS M WHERE C.ID = M.CONTACT_ID AND M.GROUP_ID = 12 AND M.CONTACT_TYP"
            u"E = 'S' UNION SELECT CODE, C.NAME AS FNAME,MOBILENO,'' AS COUNTRYCODE, 3 AS CONTACTT"
            u"YPE, MOBILENO AS MOBILEDISPLAY FROM V_ZUL$REMOTE_CONTACTS C, SMS_ABGROUPMAPS M, SMS_"
            u"ABFOLDERS F WHERE C.CODE = M.CONTACT_ID AND M.GROUP_ID = 12 AND M.CONTACT_TYPE = 'R'"
            u" AND F.REMOTE_CONTACTS_CATEGORY = C.CATEGORY ORDER BY FNAME");
}

TEST(GroupQueries, CountTheMembersThatExpandingFinds) {
  const String text = MembersOfGroups({u"12", u"7"});
  EXPECT_NE(text.find(u"M.GROUP_ID IN (12, 7) AND M.CONTACT_TYPE = 'S'"), String::npos);
  EXPECT_NE(text.find(u"M.GROUP_ID IN (12, 7) AND M.CONTACT_TYPE = 'R'"), String::npos);
  EXPECT_THROW(MembersOfGroups({u"12", u"7 OR 1=1"}), Error);
}

TEST(GroupQueries, LockTheGroupsRowOnly) {
  EXPECT_EQ(LockGroup(u"12"), u"UPDATE SMS_ABGROUPS SET NAME = NAME WHERE ID = 12");
}

TEST(GroupQueries, ArePreparedToTheLetter) {
  EXPECT_EQ(kFolder,
            u"SELECT ID, NAME, TYPE, REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS WHERE ID = ? ");
  EXPECT_EQ(kFolders, u"SELECT ID, NAME, TYPE, REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS");
  EXPECT_EQ(kCountMembers,
            u"SELECT COUNT(1) AS TOTALRECORDS FROM SMS_ABGROUPMAPS WHERE GROUP_ID = ?");
  EXPECT_EQ(kCountFolderGroups,
            u"SELECT COUNT(1) AS TOTALGROUPS FROM SMS_ABGROUPS WHERE FOLDER_ID =?");
  EXPECT_EQ(kGroupIdByName, u"SELECT ID FROM SMS_ABGROUPS WHERE NAME = ?");
  EXPECT_EQ(kInsertGroup, u"INSERT INTO SMS_ABGROUPS (NAME, FOLDER_ID)  VALUES (?, ?)");
  EXPECT_EQ(kRenameGroup, u"UPDATE SMS_ABGROUPS SET NAME = ? WHERE ID = ?");
  EXPECT_EQ(kClearMembers, u"DELETE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = ?");
  EXPECT_EQ(kNameTaken, u"SELECT 1 FROM SMS_ABGROUPS WHERE NAME = ?");
  EXPECT_EQ(kCountFolderContacts,
            u"SELECT COUNT(1) AS TOTALRECORDS FROM SMS_ABCONTACTS WHERE FOLDER_ID = ?");
  EXPECT_EQ(kCountRemoteContacts,
            u"SELECT COUNT(1) AS TOTALRECORDS FROM V_ZUL$REMOTE_CONTACTS WHERE CATEGORY = (SELECT "
            u"REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS WHERE ID = ?)");
  EXPECT_EQ(kNameTakenByAnother, u"SELECT 1 FROM SMS_ABGROUPS WHERE NAME = ? AND ID <> ?");
  EXPECT_EQ(kInsertMember,
            u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (?, ?, ?)");
  EXPECT_EQ(kContact, u"SELECT FNAME, MOBILENO, COUNTRYCODE FROM SMS_ABCONTACTS WHERE ID =?");
  EXPECT_EQ(kExpandedMembers,
            u"SELECT TO_CHAR(ID) AS ID, FNAME, MOBILENO, COUNTRYCODE FROM SMS_ABCONTACTS C,SMS_ABG"
            u"ROUPMAPS M WHERE C.ID = M.CONTACT_ID AND M.GROUP_ID = ? AND M.CONTACT_TYPE = 'S' UNI"
            u"ON SELECT CODE, NAME, MOBILENO, '' AS COUNTRYCODE FROM V_ZUL$REMOTE_CONTACTS C, SMS_"
            u"ABGROUPMAPS M WHERE C.CODE = M.CONTACT_ID AND M.GROUP_ID = ? AND M.CONTACT_TYPE = 'R"
            u"'");
}

TEST(GroupQueries, AreEmptyWithoutADialect) {
  for (const Purpose purpose : {Purpose::EditGroup, Purpose::PickRecipients}) {
    EXPECT_EQ(SharedCandidates(Dialect::None, purpose, u"7"), u"");
    EXPECT_EQ(RemoteCandidates(Dialect::None, purpose, u"7"), u"");
  }
  EXPECT_EQ(Members(Dialect::None, u"7"), u"");
}

TEST(GroupQueries, RefuseAnIdThatIsNotDigits) {
  for (const StringView id : {u"", u" 7", u"-7", u"7a", u"7 OR 1=1", u"\u0967"}) {
    EXPECT_THROW(SharedCandidates(Dialect::Sql, Purpose::EditGroup, id), Error);
    EXPECT_THROW(RemoteCandidates(Dialect::Oracle, Purpose::PickRecipients, id), Error);
    EXPECT_THROW(Members(Dialect::Sql, id), Error);
    EXPECT_THROW(LockGroup(id), Error);
  }
}

TEST(FoldedDialect, SetsTheCaseOfTheWordAside) {
  for (const StringView word : {u"SQL", u"sql", u"Sql"}) {
    EXPECT_EQ(FoldedDialect(word), Dialect::Sql);
  }
  for (const StringView word : {u"ORACLE", u"Oracle", u"oracle"}) {
    EXPECT_EQ(FoldedDialect(word), Dialect::Oracle);
  }
  for (const StringView word : {u"MYSQL", u" SQL", u"", u"SQL "}) {
    EXPECT_EQ(FoldedDialect(word), Dialect::None);
  }
}

TEST(WantsNarrowText, KnowsOneWordInAnyCase) {
  EXPECT_TRUE(WantsNarrowText(u"MYSQL"));
  EXPECT_TRUE(WantsNarrowText(u"MySql"));
  EXPECT_FALSE(WantsNarrowText(u"SQL"));
  EXPECT_FALSE(WantsNarrowText(u"MYSQL "));
}

TEST(GroupQueries, LookForSoManyMembersAtOnce) {
  EXPECT_EQ(ContactsAmong(3), u"SELECT ID FROM SMS_ABCONTACTS WHERE ID IN (?, ?, ?)");
  EXPECT_EQ(RemoteContactsAmong(1), u"SELECT CODE FROM V_ZUL$REMOTE_CONTACTS WHERE CODE IN (?)");
}

TEST(GroupQueries, ReadAGroupAsItIsStored) {
  EXPECT_EQ(kGroup, u"SELECT NAME, FOLDER_ID FROM SMS_ABGROUPS WHERE ID = ?");
  EXPECT_EQ(kMemberships,
            u"SELECT CONTACT_ID, CONTACT_TYPE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = ?");
}

}  // namespace
}  // namespace ktrv::data::GroupQueries
