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

inline constexpr StringView kFolders =
    u"SELECT ID, NAME, TYPE, REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS ORDER BY ID";
inline constexpr StringView kGroups = u"SELECT ID, NAME, FOLDER_ID FROM SMS_ABGROUPS ORDER BY ID";
inline constexpr StringView kMembersOfGroups =
    u"SELECT GROUP_ID, COUNT(*) AS TOTALRECORDS FROM SMS_ABGROUPMAPS GROUP BY GROUP_ID";
inline constexpr StringView kContactsOfFolders =
    u"SELECT FOLDER_ID, COUNT(*) AS TOTALRECORDS FROM SMS_ABCONTACTS GROUP BY FOLDER_ID";
inline constexpr StringView kContactsOfCategories =
    u"SELECT CATEGORY, COUNT(*) AS TOTALRECORDS FROM V_ZUL$REMOTE_CONTACTS GROUP BY CATEGORY";

/// Groups and contacts of memberships, those of a contact in the order of the groups' ids.
inline constexpr StringView kContactMemberships =
    u"SELECT GROUP_ID, CONTACT_ID FROM SMS_ABGROUPMAPS WHERE CONTACT_TYPE = 'S' "
    u"ORDER BY CONTACT_ID, GROUP_ID";

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

// Repairs. Parameters: the id and the former folder, both integers.
inline constexpr StringView kTakeContactOut =
    u"UPDATE SMS_ABCONTACTS SET FOLDER_ID = 0 WHERE ID = ? AND FOLDER_ID = ?";
inline constexpr StringView kTakeGroupOut =
    u"UPDATE SMS_ABGROUPS SET FOLDER_ID = 0 WHERE ID = ? AND FOLDER_ID = ?";
/// Parameters: group (integer), contact (text of 50), type (text of 1).
inline constexpr StringView kDeleteMembership =
    u"DELETE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = ? AND CONTACT_ID = ? AND CONTACT_TYPE = ?";

}  // namespace ktrv::data::ToolQueries
