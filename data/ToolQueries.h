#pragma once

#include <array>
#include <utility>
#include <vector>

#include "data/IdText.h"

/// Query texts of the console program, the same for every engine.
namespace ktrv::data::ToolQueries {

inline constexpr std::array<StringView, 4> kOwnTables = {u"SMS_ABFOLDERS", u"SMS_ABCONTACTS",
                                                         u"SMS_ABGROUPS", u"SMS_ABGROUPMAPS"};
/// The tables and the view that the host brings.
inline constexpr std::array<StringView, 3> kHostTables = {u"SMS_USERS", u"ZUL$CONTACTS_CATEGORY",
                                                          u"V_ZUL$REMOTE_CONTACTS"};
/// All columns and no row of a table.
inline String NoRows(StringView table) {
  return u"SELECT * FROM " + String(table) + u" WHERE 1 = 2";
}

/// The operators of the schema that compare an id with this type on their left side.
inline String SameIdOperators(StringView leftType) {
  return u"SELECT COUNT(*) FROM PG_OPERATOR O JOIN PG_PROC P ON P.OID = O.OPRCODE "
         u"JOIN PG_TYPE T ON T.OID = O.OPRLEFT WHERE P.PRONAME = 'sms_ab_same_id' "
         u"AND PG_OPERATOR_IS_VISIBLE(O.OID) AND T.TYPNAME = '" +
         String(leftType) + u"'";
}

inline constexpr StringView kFolders =
    u"SELECT ID, NAME, TYPE, REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS ORDER BY ID";
inline constexpr StringView kGroups = u"SELECT ID, NAME, FOLDER_ID FROM SMS_ABGROUPS ORDER BY ID";
inline constexpr StringView kMembersOfGroups =
    u"SELECT GROUP_ID, COUNT(*) AS TOTALRECORDS FROM SMS_ABGROUPMAPS GROUP BY GROUP_ID";
inline constexpr StringView kContactsOfFolders =
    u"SELECT FOLDER_ID, COUNT(*) AS TOTALRECORDS FROM SMS_ABCONTACTS GROUP BY FOLDER_ID";
inline constexpr StringView kContactsOfCategories =
    u"SELECT CATEGORY, COUNT(*) AS TOTALRECORDS FROM V_ZUL$REMOTE_CONTACTS GROUP BY CATEGORY";

/// Groups and contacts of memberships, in the order of the groups' ids.
inline constexpr StringView kContactMemberships =
    u"SELECT GROUP_ID, CONTACT_ID FROM SMS_ABGROUPMAPS WHERE CONTACT_TYPE = 'S' "
    u"ORDER BY GROUP_ID";

// All columns of contacts: the id, the folder, then the others in the order of the table.
#define KTRV_CONTACT_COLUMNS                                                                  \
  u"SELECT C.ID, C.FOLDER_ID, C.FNAME, C.MNAME, C.LNAME, C.COUNTRYCODE, C.MOBILENO, "         \
  u"C.OFFICEPHONE, C.HOMEPHONE, C.FAX, C.EMAIL, C.ORGANISATION, C.ADDRESS, C.CITY, C.STATE, " \
  u"C.COUNTRY, C.ZIP, C.AGE, C.SEX, C.BIRTHDAY, C.ANNIVERSARY, C.HOBBY FROM SMS_ABCONTACTS C"
inline constexpr StringView kContacts = KTRV_CONTACT_COLUMNS u" ORDER BY C.ID";
/// Contacts of a folder. \throws as WithId does
inline String ContactsOfFolder(StringView folderId) {
  return WithId(KTRV_CONTACT_COLUMNS u" WHERE C.FOLDER_ID = {id} ORDER BY C.ID", folderId);
}
/// Contacts of a group; one that is in it twice comes twice. \throws as WithId does
inline String ContactsOfGroup(StringView groupId) {
  return WithId(KTRV_CONTACT_COLUMNS u", SMS_ABGROUPMAPS M WHERE C.ID = M.CONTACT_ID AND "
                                     u"M.GROUP_ID = {id} AND M.CONTACT_TYPE = 'S' ORDER BY C.ID",
                groupId);
}
#undef KTRV_CONTACT_COLUMNS
// How many rows these have.
inline String CountOf(StringView table) {
  return u"SELECT COUNT(*) FROM " + String(table);
}
inline String CountOfFolder(StringView folderId) {
  return WithId(CountOf(u"SMS_ABCONTACTS") + u" WHERE FOLDER_ID = {id}", folderId);
}
inline String CountOfGroup(StringView groupId) {
  return WithId(
      u"SELECT COUNT(*) FROM SMS_ABGROUPMAPS WHERE GROUP_ID = {id} AND CONTACT_TYPE = 'S'",
      groupId);
}

// The check of an address book.

/// The tables with the columns that the component uses.
const std::vector<std::pair<StringView, std::vector<StringView>>>& Columns();

/// A column that lists need an index for, and the name of a new one.
struct IndexedColumn {
  StringView Table;
  StringView Column;
  StringView Name;
};
inline String CreateIndex(const IndexedColumn& index) {
  return u"CREATE INDEX " + String(index.Name) + u" ON " + String(index.Table) + u" (" +
         String(index.Column) + u")";
}
// The tables and first columns of all indexes.
inline constexpr StringView kIndexesOfSqlite =
    u"SELECT M.TBL_NAME, I.NAME FROM SQLITE_MASTER M, PRAGMA_INDEX_INFO(M.NAME) I "
    u"WHERE M.TYPE = 'index' AND I.SEQNO = 0";
inline constexpr StringView kIndexesOfMySql =
    u"SELECT TABLE_NAME, COLUMN_NAME FROM INFORMATION_SCHEMA.STATISTICS "
    u"WHERE TABLE_SCHEMA = DATABASE() AND SEQ_IN_INDEX = 1";
inline constexpr StringView kIndexesOfPostgreSql =
    u"SELECT C.RELNAME, A.ATTNAME FROM PG_INDEX X JOIN PG_CLASS C ON C.OID = X.INDRELID "
    u"JOIN PG_ATTRIBUTE A ON A.ATTRELID = C.OID AND A.ATTNUM = X.INDKEY[0] "
    u"WHERE PG_TABLE_IS_VISIBLE(C.OID)";
inline constexpr StringView kIndexesOfSqlServer =
    u"SELECT OBJECT_NAME(X.OBJECT_ID), C.NAME FROM SYS.INDEX_COLUMNS X JOIN SYS.COLUMNS C "
    u"ON C.OBJECT_ID = X.OBJECT_ID AND C.COLUMN_ID = X.COLUMN_ID WHERE X.KEY_ORDINAL = 1";
inline constexpr StringView kIndexesOfOracle =
    u"SELECT TABLE_NAME, COLUMN_NAME FROM USER_IND_COLUMNS WHERE COLUMN_POSITION = 1";

// What makes it unsafe to create one of the own tables: something has its name in any schema; on
// engines that hide what the user may not read, also another own table that is in another schema.
inline String ObstaclesOnSqlite(StringView table) {
  return u"SELECT COUNT(*) FROM SQLITE_MASTER WHERE UPPER(NAME) = '" + String(table) + u"'";
}
/// There a connection reaches only the tables of its database.
inline String ObstaclesOnMySql(StringView table) {
  return u"SELECT COUNT(*) FROM INFORMATION_SCHEMA.TABLES WHERE TABLE_SCHEMA = DATABASE() AND "
         u"UPPER(TABLE_NAME) = '" +
         String(table) + u"'";
}
inline String ObstaclesOnPostgreSql(StringView table) {
  return u"SELECT COUNT(*) FROM PG_CLASS WHERE UPPER(RELNAME) = '" + String(table) + u"'";
}
#define KTRV_OWN_TABLES u"('SMS_ABFOLDERS', 'SMS_ABCONTACTS', 'SMS_ABGROUPS', 'SMS_ABGROUPMAPS')"
inline String ObstaclesOnSqlServer(StringView table) {
  return u"SELECT COUNT(*) FROM SYS.OBJECTS WHERE UPPER(NAME) = '" + String(table) +
         u"' OR (UPPER(NAME) IN " KTRV_OWN_TABLES u" AND SCHEMA_ID <> SCHEMA_ID())";
}
inline String ObstaclesOnOracle(StringView table) {
  return u"SELECT COUNT(*) FROM ALL_OBJECTS WHERE UPPER(OBJECT_NAME) = '" + String(table) +
         u"' OR (UPPER(OBJECT_NAME) IN " KTRV_OWN_TABLES u" AND OWNER <> USER)";
}
#undef KTRV_OWN_TABLES

inline constexpr StringView kNumbers =
    u"SELECT ID, FOLDER_ID, COUNTRYCODE, MOBILENO FROM SMS_ABCONTACTS";
inline constexpr StringView kMemberships =
    u"SELECT GROUP_ID, CONTACT_ID, CONTACT_TYPE FROM SMS_ABGROUPMAPS";
inline constexpr StringView kRemoteCodes = u"SELECT CODE FROM V_ZUL$REMOTE_CONTACTS";
inline constexpr StringView kUsers = u"SELECT ID, ADMIN, DISABLED, DELETED FROM SMS_USERS";

/// Contacts with a name that may have more than 50 UTF-16 units. \param length the engine's
/// function for the length of a text: at least half the units
inline String LongNames(StringView length) {
  String text = u"SELECT ID, FNAME, MNAME, LNAME FROM SMS_ABCONTACTS WHERE ";
  for (const StringView name : {u"FNAME", u"MNAME", u"LNAME"}) {
    if (name != u"FNAME") text += u" OR ";
    text.append(length).append(u"(").append(name).append(u") > 25");
  }
  return text;
}

// Repairs. Each looks again, because others may have saved since the check.

/// Moves a contact or group out of a folder that does not exist or is remote. Parameters: the id
/// and, twice, the folder, all integers.
inline String TakeOut(StringView table) {
  return u"UPDATE " + String(table) +
         u" SET FOLDER_ID = 0 WHERE ID = ? AND FOLDER_ID = ? AND NOT EXISTS "
         u"(SELECT 1 FROM SMS_ABFOLDERS WHERE ID = ? AND TYPE <> 'R')";
}
/// The same for a row whose folder is null. Parameter: the id.
inline String TakeOutOfNull(StringView table) {
  return u"UPDATE " + String(table) + u" SET FOLDER_ID = 0 WHERE ID = ? AND FOLDER_ID IS NULL";
}
/// Deletes memberships of a group or contact that does not exist. Parameters: group (integer);
/// contact and type (texts of any length) unless they are null; the id that does not exist
/// (integer). \param table SMS_ABGROUPS or SMS_ABCONTACTS, where it would be
inline String DeleteMembership(StringView table, bool contactIsNull, bool typeIsNull) {
  return String(u"DELETE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = ? AND CONTACT_ID ") +
         (contactIsNull ? u"IS NULL" : u"= ?") + u" AND CONTACT_TYPE " +
         (typeIsNull ? u"IS NULL" : u"= ?") + u" AND NOT EXISTS (SELECT 1 FROM " + String(table) +
         u" WHERE ID = ?)";
}

}  // namespace ktrv::data::ToolQueries
