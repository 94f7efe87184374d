#pragma once

#include <vector>

#include "data/ContactRules.h"
#include "data/IdText.h"

/// Query texts of an import of contacts, the same for every engine unless named after one.
namespace ktrv::data::ImportQueries {

/// What finds a contact again.
inline constexpr StringView kPeople =
    u"SELECT ID, FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO, EMAIL FROM SMS_ABCONTACTS";

/// The same of contacts that were inserted after this one. \throws as WithId does
inline String PeopleAfter(StringView contactId) {
  return WithId(String(kPeople) + u" WHERE ID > {id}", contactId);
}

/// The folder, the texts in the order of ContactText, the others.
inline constexpr StringView kInsertContact =
    u"INSERT INTO SMS_ABCONTACTS (FOLDER_ID, FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO, "
    u"OFFICEPHONE, HOMEPHONE, FAX, EMAIL, ORGANISATION, ADDRESS, CITY, STATE, COUNTRY, ZIP, HOBBY, "
    u"AGE, SEX, BIRTHDAY, ANNIVERSARY) "
    u"VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)";

inline constexpr StringView kNewestContact = u"SELECT MAX(ID) AS ID FROM SMS_ABCONTACTS";
/// Contacts that were inserted after this one. \throws as WithId does
inline String ContactsAfter(StringView contactId) {
  return WithId(u"SELECT ID, COUNTRYCODE, MOBILENO FROM SMS_ABCONTACTS WHERE ID > {id} ORDER BY ID",
                contactId);
}

/// Counts those of the tables that keep what is rolled back. \param tables as in a list of SQL
inline String TablesWithoutTransactionsOfMySql(StringView tables) {
  return u"SELECT COUNT(*) FROM INFORMATION_SCHEMA.TABLES T JOIN INFORMATION_SCHEMA.ENGINES E "
         u"ON E.ENGINE = T.ENGINE WHERE T.TABLE_SCHEMA = DATABASE() AND UPPER(T.TABLE_NAME) IN (" +
         String(tables) + u") AND COALESCE(E.TRANSACTIONS, 'NO') <> 'YES'";
}

/// The name of a contact. \throws as WithId does
inline String NameOf(StringView contactId) {
  return WithId(u"SELECT FNAME, MNAME, LNAME FROM SMS_ABCONTACTS WHERE ID = {id}", contactId);
}

/// The rows of a table with one of these ids. \throws as WithId does
inline String RowsWithId(StringView table, const std::vector<String>& ids) {
  return u"SELECT ID FROM " + String(table) + u" WHERE ID IN (" + IdList(ids) + u")";
}

/// Follows a query on MySql. Without it, a transaction sees the rows of its first query's time.
inline constexpr StringView kAsOfNowOfMySql = u" LOCK IN SHARE MODE";

/// The contacts of a group. \throws as WithId does
inline String MembersOf(StringView groupId) {
  return WithId(
      u"SELECT CONTACT_ID FROM SMS_ABGROUPMAPS WHERE GROUP_ID = {id} AND CONTACT_TYPE = 'S'",
      groupId);
}

}  // namespace ktrv::data::ImportQueries
