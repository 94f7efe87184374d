#include "data/AddressBookQueries.h"

#include "data/IdText.h"

namespace ktrv::data::AddressBookQueries {
namespace {

constexpr StringView kRootSql =
    u"SELECT ID,(ISNULL(FNAME ,'') + ' ' + ISNULL(MNAME,'') + ' ' + ISNULL(LNAME,'')) AS NAME, "
    u"1 AS SHARED,(LTRIM(ISNULL(COUNTRYCODE ,'') + ' ') + ISNULL(MOBILENO,'')) as MOBILENO,  "
    u"EMAIL,ADDRESS,ORGANISATION,FOLDER_ID , 1 AS CONTACTTYPE  FROM SMS_ABCONTACTS "
    u"WHERE FOLDER_ID = 0 "
    u"UNION  SELECT ID , NAME , 1 AS SHARED , '' AS MOBILENO ,  '' AS EMAIL , '' AS ADDRESS , "
    u"'' AS ORGANISATION,FOLDER_ID  , 2 AS CONTACTTYPE FROM SMS_ABGROUPS  WHERE FOLDER_ID= 0 "
    u"ORDER BY NAME";

constexpr StringView kRootOracle =
    u"SELECT ID,(NVL(FNAME , '') || ' ' || NVL(MNAME,'') || ' ' || NVL(LNAME,'')) AS NAME, "
    u"1 AS SHARED,(LTRIM(NVL(COUNTRYCODE , '') || ' ') || NVL(MOBILENO,'')) as MOBILENO,  "
    u"EMAIL,ADDRESS,ORGANISATION,FOLDER_ID , 1 AS CONTACTTYPE  FROM SMS_ABCONTACTS "
    u"WHERE FOLDER_ID = 0 "
    u"UNION  SELECT ID , NAME , 1 AS SHARED , '' AS MOBILENO ,  '' AS EMAIL , '' AS ADDRESS , "
    u"'' AS ORGANISATION , FOLDER_ID  , 2 AS CONTACTTYPE FROM SMS_ABGROUPS  WHERE FOLDER_ID= 0 "
    u"ORDER BY NAME";

constexpr StringView kFolderSql =
    u"SELECT ID,(FNAME + ' ' + MNAME + ' ' + LNAME) AS NAME , "
    u"1 AS SHARED,(LTRIM(COUNTRYCODE + ' ') + MOBILENO) as MOBILENO ,  "
    u"EMAIL,ADDRESS,ORGANISATION, FOLDER_ID , 1 AS CONTACTTYPE  FROM SMS_ABCONTACTS "
    u"WHERE  FOLDER_ID={id} "
    u"UNION  SELECT ID , NAME , 1 AS SHARED , '' AS MOBILENO ,  '' AS EMAIL , '' AS ADDRESS , "
    u"'' AS ORGANISATION ,  FOLDER_ID  , 2 AS CONTACTTYPE FROM SMS_ABGROUPS  WHERE FOLDER_ID ={id} "
    u"ORDER BY NAME";

constexpr StringView kFolderOracle =
    u"SELECT ID,(FNAME || ' ' || MNAME  || ' ' || LNAME) AS NAME,  "
    u"1 AS SHARED,(LTRIM(COUNTRYCODE || ' ') || MOBILENO) as MOBILENO ,  "
    u"EMAIL,ADDRESS,ORGANISATION, FOLDER_ID , 1 AS CONTACTTYPE FROM SMS_ABCONTACTS "
    u"WHERE  FOLDER_ID={id} "
    u"UNION  SELECT ID , NAME , 1 AS SHARED , '' AS MOBILENO ,  '' AS EMAIL , '' AS ADDRESS , "
    u"'' AS ORGANISATION , FOLDER_ID  , 2 AS CONTACTTYPE FROM SMS_ABGROUPS  WHERE FOLDER_ID ={id} "
    u"ORDER BY NAME";

constexpr StringView kRemoteFolder =
    u"SELECT CODE,NAME,1 AS SHARED,MOBILENO,EMAIL,'' AS ADDRESS,'' AS ORGANISATION,"
    u"{id} AS FOLDER_ID, 3 AS CONTACTTYPE  FROM V_ZUL$REMOTE_CONTACTS WHERE CATEGORY =  "
    u"(SELECT REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS WHERE ID = {id})";

constexpr StringView kGroupSql =
    u" SELECT A.ID AS ID,(ISNULL(FNAME,'') + ' ' + ISNULL(MNAME,'') +  ' ' + ISNULL(LNAME,'')) AS "
    u"NAME,1 AS SHARED, (LTRIM(ISNULL(COUNTRYCODE,'') + ' ') + ISNULL(MOBILENO,'')) as MOBILENO "
    u",EMAIL,ADDRESS,ORGANISATION,A.FOLDER_ID ,  1 AS CONTACTTYPE  FROM SMS_ABCONTACTS A "
    u",SMS_ABGROUPS B , SMS_ABGROUPMAPS C  "
    u"WHERE B.ID={id} AND B.ID=C.GROUP_ID AND C.CONTACT_ID=A.ID ";

constexpr StringView kGroupOracle =
    u"SELECT TO_CHAR(ID) AS ID, (NVL(FNAME,'')|| ' ' || NVL(MNAME,'') || ' ' || NVL(LNAME,'')) AS "
    u"NAME, 1 AS SHARED, (LTRIM(NVL(COUNTRYCODE ,'') || ' ') || NVL(MOBILENO,'')) as MOBILENO, "
    u"EMAIL, ADDRESS, ORGANISATION, FOLDER_ID, 1 AS CONTACTTYPE FROM SMS_ABCONTACTS C,"
    u"SMS_ABGROUPMAPS M WHERE C.ID = M.CONTACT_ID AND M.GROUP_ID = {id} AND M.CONTACT_TYPE = 'S' ";

constexpr StringView kGroupRemoteHalf =
    u"UNION SELECT CODE, C.NAME, 1 AS SHARED, MOBILENO, EMAIL, '' AS ADDRESS, '' AS ORGANISATION, "
    u"F.ID AS FOLDER_ID, 3 AS CONTACTTYPE FROM V_ZUL$REMOTE_CONTACTS C, SMS_ABGROUPMAPS M, "
    u"SMS_ABFOLDERS F WHERE C.CODE = M.CONTACT_ID AND M.GROUP_ID = {id} AND M.CONTACT_TYPE = 'R' "
    u"AND F.REMOTE_CONTACTS_CATEGORY = C.CATEGORY ORDER BY NAME";

String Chosen(Dialect dialect, StringView sql, StringView oracle) {
  switch (dialect) {
    case Dialect::Sql:
      return String(sql);
    case Dialect::Oracle:
      return String(oracle);
    case Dialect::None:
      break;
  }
  return {};
}

}  // namespace

String RootItems(Dialect dialect) {
  return Chosen(dialect, kRootSql, kRootOracle);
}

String FolderItems(Dialect dialect, StringView folderId) {
  return WithId(Chosen(dialect, kFolderSql, kFolderOracle), folderId);
}

String RemoteFolderItems(StringView folderId) {
  return WithId(kRemoteFolder, folderId);
}

String GroupItems(Dialect dialect, StringView groupId) {
  if (dialect == Dialect::None) return {};
  return WithId(Chosen(dialect, kGroupSql, kGroupOracle) + String(kGroupRemoteHalf), groupId);
}

const std::vector<CommandText>& Counts() {
  static const std::vector<CommandText> kCounts{
      {String(kCountFolderContacts), {{u"FOLDER_ID"}}},
      {String(kCountRemoteContacts), {{u"FOLDER_ID"}}},
      {String(kCountFolderGroups), {{u"FOLDER_ID"}}},
      {String(kCountGroupMembers), {{u"GROUP_ID"}}},
  };
  return kCounts;
}

}  // namespace ktrv::data::AddressBookQueries
