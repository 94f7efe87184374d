#include "data/GroupQueries.h"

#include <initializer_list>

#include "data/IdText.h"

namespace ktrv::data::GroupQueries {
namespace {

/// Country code, blank and mobile number; without a country code no blank.
constexpr StringView kDisplaySql =
    u" (LTRIM(ISNULL(COUNTRYCODE , '') + ' ') + ISNULL(MOBILENO,'')) AS MOBILE_DISPLAY";
constexpr StringView kDisplayOracle =
    u" (LTRIM(NVL(COUNTRYCODE , '') || ' ') || NVL(MOBILENO, '')) AS MOBILE_DISPLAY";

constexpr StringView kContacts = u"SELECT ID , FNAME , MOBILENO , COUNTRYCODE , 1 ,  ";
constexpr StringView kContactsEditorOracle = u"SELECT ID , FNAME , MOBILENO , COUNTRYCODE, 1 ,  ";
constexpr StringView kOfFolder = u" FROM SMS_ABCONTACTS WHERE FOLDER_ID = {id}";

constexpr StringView kGroupsSql =
    u" UNION SELECT ID , NAME , '' , '' , 2  , '' AS MOBILE_DISPLAY FROM "
    u" SMS_ABGROUPS WHERE FOLDER_ID = {id}";
constexpr StringView kGroupsOracle =
    u" UNION SELECT ID , NAME , '' , '' , 2 , '' AS MOBILE_DISPLAY FROM "
    u" SMS_ABGROUPS WHERE FOLDER_ID = {id}";

constexpr StringView kRemotePicker = u"SELECT CODE AS ID, NAME, MOBILENO,'' AS COUNTRYCODE, 3, ";
constexpr StringView kRemoteEditorSql =
    u"SELECT CODE AS ID, NAME, MOBILENO, '' AS COUNTRYCODE , 3, ";
constexpr StringView kRemoteEditorOracle =
    u"SELECT CODE AS ID, NAME, MOBILENO, '' AS COUNTRYCODE, 3, ";
constexpr StringView kOfCategory =
    u"MOBILENO AS MOBILE_DISPLAY FROM V_ZUL$REMOTE_CONTACTS WHERE CATEGORY = "
    u"(SELECT REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS WHERE ID = {id})";

constexpr StringView kMembersSql =
    u"SELECT ID , FNAME , MOBILENO , COUNTRYCODE , 1 ,  "
    u" (LTRIM(ISNULL(COUNTRYCODE , '') + ' ') + ISNULL(MOBILENO,'')) AS MOBILE_DISPLAY"
    u" FROM SMS_ABCONTACTS WHERE  ID IN "
    u"(SELECT CONTACT_ID FROM SMS_ABGROUPMAPS WHERE GROUP_ID = {id})";

constexpr StringView kMembersOracle =
    u"SELECT TO_CHAR(ID) AS ID, FNAME, "
    u"MOBILENO, COUNTRYCODE, 1 AS CONTACTTYPE, "
    u"(LTRIM(NVL(COUNTRYCODE ,'') || ' ') || NVL(MOBILENO,'')) AS MOBILEDISPLAY "
    u"FROM SMS_ABCONTACTS C, SMS_ABGROUPMAPS M "
    u"WHERE C.ID = M.CONTACT_ID AND M.GROUP_ID = {id} AND M.CONTACT_TYPE = 'S' "
    u"UNION "
    u"SELECT CODE, C.NAME AS FNAME,MOBILENO,'' AS COUNTRYCODE, 3 AS CONTACTTYPE, "
    u"MOBILENO AS MOBILEDISPLAY "
    u"FROM V_ZUL$REMOTE_CONTACTS C, SMS_ABGROUPMAPS M, SMS_ABFOLDERS F "
    u"WHERE C.CODE = M.CONTACT_ID AND M.GROUP_ID = {id} AND M.CONTACT_TYPE = 'R' AND "
    u"F.REMOTE_CONTACTS_CATEGORY = C.CATEGORY "
    u"ORDER BY FNAME";

String Joined(std::initializer_list<StringView> pieces) {
  String text;
  for (const StringView piece : pieces) text += piece;
  return text;
}

/// "(?, ?, ...)" with `count` placeholders.
String Places(std::size_t count) {
  String text = u"(?";
  for (std::size_t place = 1; place < count; ++place) text += u", ?";
  return text + u")";
}

}  // namespace

String ContactsAmong(std::size_t count) {
  return u"SELECT ID FROM SMS_ABCONTACTS WHERE ID IN " + Places(count);
}

String RemoteContactsAmong(std::size_t count) {
  return u"SELECT CODE FROM V_ZUL$REMOTE_CONTACTS WHERE CODE IN " + Places(count);
}

String SharedCandidates(Dialect dialect, Purpose purpose, StringView folderId) {
  const bool picking = purpose == Purpose::PickRecipients;
  switch (dialect) {
    case Dialect::Sql:
      return WithId(Joined({kContacts, kDisplaySql, kOfFolder, picking ? kGroupsSql : u""}),
                    folderId);
    case Dialect::Oracle:
      return WithId(Joined({picking ? kContacts : kContactsEditorOracle, kDisplayOracle, kOfFolder,
                            picking ? kGroupsOracle : u""}),
                    folderId);
    case Dialect::None:
      break;
  }
  return {};
}

String RemoteCandidates(Dialect dialect, Purpose purpose, StringView folderId) {
  if (dialect == Dialect::None) return {};
  const bool sql = dialect == Dialect::Sql;
  const StringView start = purpose == Purpose::PickRecipients ? kRemotePicker
                           : sql                              ? kRemoteEditorSql
                                                              : kRemoteEditorOracle;
  return WithId(Joined({start, kOfCategory}), folderId);
}

String Members(Dialect dialect, StringView groupId) {
  if (dialect == Dialect::None) return {};
  return WithId(dialect == Dialect::Sql ? kMembersSql : kMembersOracle, groupId);
}

String LockGroup(StringView groupId) {
  return WithId(u"UPDATE SMS_ABGROUPS SET NAME = NAME WHERE ID = {id}", groupId);
}

String MembersOfGroups(const std::vector<String>& groupIds) {
  constexpr StringView kOfGroups =
      u"SELECT M.GROUP_ID, TO_CHAR(ID) AS ID, FNAME, MOBILENO, COUNTRYCODE "
      u"FROM SMS_ABCONTACTS C,SMS_ABGROUPMAPS M "
      u"WHERE C.ID = M.CONTACT_ID AND M.GROUP_ID IN (";
  constexpr StringView kRemoteOfGroups =
      u") AND M.CONTACT_TYPE = 'S' "
      u"UNION "
      u"SELECT M.GROUP_ID, CODE, NAME, MOBILENO, '' AS COUNTRYCODE "
      u"FROM V_ZUL$REMOTE_CONTACTS C, SMS_ABGROUPMAPS M "
      u"WHERE C.CODE = M.CONTACT_ID AND M.GROUP_ID IN (";
  const String ids = IdList(groupIds);
  return Joined({kOfGroups, ids, kRemoteOfGroups, ids, u") AND M.CONTACT_TYPE = 'R'"});
}

const std::vector<CommandText>& Commands() {
  using Parameters = std::vector<CommandParameter>;
  constexpr auto number = [](StringView name) { return CommandParameter{name}; };
  constexpr auto narrow = [](StringView name, std::int64_t size) {
    return CommandParameter{name, ParameterKind::NarrowText, size};
  };
  constexpr auto text = [](StringView query) { return String(query); };
  // In the order of Name.
  static const std::vector<CommandText> kCommands{
      {text(kFolder), {narrow(u"ID", 100)}},
      {text(kFolders), {}},
      {text(kCountMembers), {number(u"GROUP_ID")}},
      {text(kCountFolderGroups), {number(u"ID")}},
      {text(kGroupIdByName), {narrow(u"NAME", 100)}},
      {text(kInsertGroup), {{u"NAME", ParameterKind::DialectText, 100}, number(u"FOLDER_ID")}},
      {text(kRenameGroup), {narrow(u"NAME", 100), number(u"ID")}},
      {text(kClearMembers), {number(u"GROUP_ID")}},
      {text(kNameTaken), {narrow(u"NAME", 100)}},
      {text(kCountFolderContacts), {number(u"FOLDER_ID")}},
      {text(kCountRemoteContacts), {number(u"FOLDER_ID")}},
      {text(kNameTakenByAnother), {narrow(u"NAME", 100), number(u"ID")}},
      {text(kInsertMember),
       {number(u"GROUP_ID"), narrow(u"CONTACT_ID", 50), narrow(u"CONTACT_TYPE", 1)}},
      {text(kContact), {number(u"ID")}},
      {text(kExpandedMembers), {number(u"GROUP_ID_1"), number(u"GROUP_ID_2")}},
      {text(kGroup), {number(u"ID")}},
      {text(kMemberships), {number(u"GROUP_ID")}},
      {ContactsAmong(kAmong), Parameters(kAmong, number(u"ID"))},
      {RemoteContactsAmong(kAmong), Parameters(kAmong, narrow(u"CODE", 50))},
      {ContactsAmong(kAmongMany), Parameters(kAmongMany, number(u"ID"))},
      {RemoteContactsAmong(kAmongMany), Parameters(kAmongMany, narrow(u"CODE", 50))},
      {text(kFullName), {number(u"ID")}},
  };
  return kCommands;
}

}  // namespace ktrv::data::GroupQueries
