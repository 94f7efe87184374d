#include "data/AddressBookQueries.h"

#include <gtest/gtest.h>

#include "common/Error.h"
#include "data/IdText.h"
#include "data/UserQueries.h"

// The texts stand here a second time, whole and with the ids filled in: they are what
// administrators see in their servers' statement logs, and nobody may change a blank in them by
// accident.
namespace ktrv::data::AddressBookQueries {
namespace {

TEST(AddressBookQueries, ListsTheRootInTheSqlFamily) {
  EXPECT_EQ(RootItems(Dialect::Sql),
            u"SELECT ID,(ISNULL(FNAME ,'') + ' ' + ISNULL(MNAME,'') + ' ' + ISNULL(LNAME,'')) AS N"
            u"AME, 1 AS SHARED,(LTRIM(ISNULL(COUNTRYCODE ,'') + ' ') + ISNULL(MOBILENO,'')) as MOB"
            u"ILENO,  EMAIL,ADDRESS,ORGANISATION,FOLDER_ID , 1 AS CONTACTTYPE  FROM SMS_ABCONTACTS"
            u" WHERE FOLDER_ID = 0 UNION  SELECT ID , NAME , 1 AS SHARED , '' AS MOBILENO ,  '' AS"
            u" EMAIL , '' AS ADDRESS , '' AS ORGANISATION,FOLDER_ID  , 2 AS CONTACTTYPE FROM SMS_A"
            u"BGROUPS  WHERE FOLDER_ID= 0 ORDER BY NAME");
}

TEST(AddressBookQueries, ListsTheRootInTheOracleFamily) {
  EXPECT_EQ(RootItems(Dialect::Oracle),
            u"SELECT ID,(NVL(FNAME , '') || ' ' || NVL(MNAME,'') || ' ' || NVL(LNAME,'')) AS NAME,"
            u" 1 AS SHARED,(LTRIM(NVL(COUNTRYCODE , '') || ' ') || NVL(MOBILENO,'')) as MOBILENO, "
            u" EMAIL,ADDRESS,ORGANISATION,FOLDER_ID , 1 AS CONTACTTYPE  FROM SMS_ABCONTACTS WHERE "
            u"FOLDER_ID = 0 UNION  SELECT ID , NAME , 1 AS SHARED , '' AS MOBILENO ,  '' AS EMAIL "
            u", '' AS ADDRESS , '' AS ORGANISATION , FOLDER_ID  , 2 AS CONTACTTYPE FROM SMS_ABGROU"
            u"PS  WHERE FOLDER_ID= 0 ORDER BY NAME");
}

TEST(AddressBookQueries, ListsASharedFolderWithoutNullGuardsInTheSqlFamily) {
  EXPECT_EQ(FolderItems(Dialect::Sql, u"7"),
            u"SELECT ID,(FNAME + ' ' + MNAME + ' ' + LNAME) AS NAME , 1 AS SHARED,(LTRIM(COUNTRYCO"
            u"DE + ' ') + MOBILENO) as MOBILENO ,  EMAIL,ADDRESS,ORGANISATION, FOLDER_ID , 1 AS CO"
            u"NTACTTYPE  FROM SMS_ABCONTACTS WHERE  FOLDER_ID=7 UNION  SELECT ID , NAME , 1 AS SHA"
            u"RED , '' AS MOBILENO ,  '' AS EMAIL , '' AS ADDRESS , '' AS ORGANISATION ,  FOLDER_I"
            u"D  , 2 AS CONTACTTYPE FROM SMS_ABGROUPS  WHERE FOLDER_ID =7 ORDER BY NAME");
}

TEST(AddressBookQueries, ListsASharedFolderWithoutNullGuardsInTheOracleFamily) {
  EXPECT_EQ(FolderItems(Dialect::Oracle, u"7"),
            u"SELECT ID,(FNAME || ' ' || MNAME  || ' ' || LNAME) AS NAME,  1 AS SHARED,(LTRIM(COUN"
            u"TRYCODE || ' ') || MOBILENO) as MOBILENO ,  EMAIL,ADDRESS,ORGANISATION, FOLDER_ID , "
            u"1 AS CONTACTTYPE FROM SMS_ABCONTACTS WHERE  FOLDER_ID=7 UNION  SELECT ID , NAME , 1 "
            u"AS SHARED , '' AS MOBILENO ,  '' AS EMAIL , '' AS ADDRESS , '' AS ORGANISATION , FOL"
            u"DER_ID  , 2 AS CONTACTTYPE FROM SMS_ABGROUPS  WHERE FOLDER_ID =7 ORDER BY NAME");
}

TEST(AddressBookQueries, ListsARemoteFolderUnordered) {
  EXPECT_EQ(RemoteFolderItems(u"7"),
            u"SELECT CODE,NAME,1 AS SHARED,MOBILENO,EMAIL,'' AS ADDRESS,'' AS ORGANISATION,7 AS FO"
            u"LDER_ID, 3 AS CONTACTTYPE  FROM V_ZUL$REMOTE_CONTACTS WHERE CATEGORY =  (SELECT REMO"
            u"TE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS WHERE ID = 7)");
}

TEST(AddressBookQueries, ListsAGroupInTheSqlFamilyWhateverTheMembershipType) {
  EXPECT_EQ(GroupItems(Dialect::Sql, u"9"),
            u" SELECT A.ID AS ID,(ISNULL(FNAME,'') + ' ' + ISNULL(MNAME,'') +  ' ' + ISNULL(LNAME,"
            u"'')) AS NAME,1 AS SHARED, (LTRIM(ISNULL(COUNTRYCODE,'') + ' ') + ISNULL(MOBILENO,'')"
            u") as MOBILENO ,EMAIL,ADDRESS,ORGANISATION,A.FOLDER_ID ,  1 AS CONTACTTYPE  FROM SMS_"
            u"ABCONTACTS A ,SMS_ABGROUPS B , SMS_ABGROUPMAPS C  WHERE B.ID=9 AND B.ID=C.GROUP_ID A"
            u"ND C.CONTACT_ID=A.ID UNION SELECT CODE, C.NAME, 1 AS SHARED, MOBILENO, EMAIL, '' AS "
            u"ADDRESS, '' AS ORGANISATION, F.ID AS FOLDER_ID, 3 AS CONTACTTYPE FROM V_ZUL$REMOTE_C"
            u"ONTACTS C, SMS_ABGROUPMAPS M, SMS_ABFOLDERS F WHERE C.CODE = M.CONTACT_ID AND M.GROU"
            u"P_ID = 9 AND M.CONTACT_TYPE = 'R' AND F.REMOTE_CONTACTS_CATEGORY = C.CATEGORY ORDER "
            u"BY NAME");
}

TEST(AddressBookQueries, ListsAGroupInTheOracleFamilyByMembershipType) {
  EXPECT_EQ(GroupItems(Dialect::Oracle, u"9"),
            u"SELECT TO_CHAR(ID) AS ID, (NVL(FNAME,'')|| ' ' || NVL(MNAME,'') || ' ' || NVL(LNAME,"
            u"'')) AS NAME, 1 AS SHARED, (LTRIM(NVL(COUNTRYCODE ,'') || ' ') || NVL(MOBILENO,'')) "
            u"as MOBILENO, EMAIL, ADDRESS, ORGANISATION, FOLDER_ID, 1 AS CONTACTTYPE FROM SMS_ABCO"
            u"NTACTS C,SMS_ABGROUPMAPS M WHERE C.ID = M.CONTACT_ID AND M.GROUP_ID = 9 AND M.CONTAC"
            u"T_TYPE = 'S' UNION SELECT CODE, C.NAME, 1 AS SHARED, MOBILENO, EMAIL, '' AS ADDRESS,"
            u" '' AS ORGANISATION, F.ID AS FOLDER_ID, 3 AS CONTACTTYPE FROM V_ZUL$REMOTE_CONTACTS "
            u"C, SMS_ABGROUPMAPS M, SMS_ABFOLDERS F WHERE C.CODE = M.CONTACT_ID AND M.GROUP_ID = 9"
            u" AND M.CONTACT_TYPE = 'R' AND F.REMOTE_CONTACTS_CATEGORY = C.CATEGORY ORDER BY NAME");
}

TEST(AddressBookQueries, ReadTheTreeInTheDatabasesOrder) {
  EXPECT_EQ(kSharedFolders,
            u"SELECT ID , NAME , PARENTFOLDERID FROM SMS_ABFOLDERS WHERE TYPE = 'S'");
  EXPECT_EQ(
      kRemoteFolders,
      u"SELECT ID, NAME, PARENTFOLDERID, REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS WHERE TYPE "
      u"= 'R'");
  EXPECT_EQ(kGroups, u"SELECT ID,NAME,FOLDER_ID FROM SMS_ABGROUPS");
}

TEST(AddressBookQueries, CountWithOneParameter) {
  EXPECT_EQ(kCountFolderContacts,
            u"SELECT COUNT(1) AS TOTALRECORDS FROM SMS_ABCONTACTS WHERE FOLDER_ID = ?");
  EXPECT_EQ(kCountRemoteContacts,
            u"SELECT COUNT(1) AS TOTALRECORDS FROM V_ZUL$REMOTE_CONTACTS WHERE CATEGORY = (SELECT "
            u"REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS WHERE ID = ?)");
  EXPECT_EQ(kCountFolderGroups,
            u"SELECT COUNT(1) AS TOTALRECORDS FROM SMS_ABGROUPS WHERE FOLDER_ID = ? ");
  EXPECT_EQ(kCountGroupMembers,
            u"SELECT COUNT(1) AS TOTALRECORDS FROM SMS_ABGROUPMAPS WHERE GROUP_ID = ?");
}

TEST(AddressBookQueries, AreEmptyWithoutADialect) {
  EXPECT_EQ(RootItems(Dialect::None), u"");
  EXPECT_EQ(FolderItems(Dialect::None, u"7"), u"");
  EXPECT_EQ(GroupItems(Dialect::None, u"9"), u"");
}

TEST(AddressBookQueries, RefuseAnIdThatIsNotDigits) {
  for (const StringView id : {u"", u" 7", u"-7", u"7a", u"7 OR 1=1", u"\u0967"}) {
    EXPECT_THROW(FolderItems(Dialect::Sql, id), Error);
    EXPECT_THROW(RemoteFolderItems(id), Error);
    EXPECT_THROW(GroupItems(Dialect::Oracle, id), Error);
  }
}

TEST(ExactDialect, ComparesTheWordAsItStands) {
  EXPECT_EQ(ExactDialect(u"SQL"), Dialect::Sql);
  EXPECT_EQ(ExactDialect(u"ORACLE"), Dialect::Oracle);
  for (const StringView word : {u"sql", u"Oracle", u"MYSQL", u" SQL", u""}) {
    EXPECT_EQ(ExactDialect(word), Dialect::None);
  }
}

TEST(WithId, FillsEveryPlace) {
  EXPECT_EQ(WithId(u"{id}-{id}.", u"12"), u"12-12.");
}

TEST(UserQueries, AskForTheRightsWithTheirDoubleBlanks) {
  EXPECT_EQ(UserQueries::Rights(-3),
            u"SELECT ADMIN FROM SMS_USERS WHERE  DISABLED = 0 AND DELETED =  0  AND ID = -3");
}

}  // namespace
}  // namespace ktrv::data::AddressBookQueries
