#pragma once

#include <vector>

#include "data/CommandText.h"
#include "data/Dialect.h"

/// Query texts of the group editor and the recipient picker. The lists have six columns in this
/// order: id, name, mobile number, country code, kind (1 contact, 2 group, 3 remote contact),
/// mobile display. Column names differ between the texts.
namespace ktrv::data::GroupQueries {

// Texts of prepared statements, the same for every engine.
inline constexpr StringView kFolder =
    u"SELECT ID, NAME, TYPE, REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS WHERE ID = ? ";
inline constexpr StringView kFolders =
    u"SELECT ID, NAME, TYPE, REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS";
inline constexpr StringView kCountMembers =
    u"SELECT COUNT(1) AS TOTALRECORDS FROM SMS_ABGROUPMAPS WHERE GROUP_ID = ?";
inline constexpr StringView kCountFolderGroups =
    u"SELECT COUNT(1) AS TOTALGROUPS FROM SMS_ABGROUPS WHERE FOLDER_ID =?";
inline constexpr StringView kGroupIdByName = u"SELECT ID FROM SMS_ABGROUPS WHERE NAME = ?";
inline constexpr StringView kInsertGroup =
    u"INSERT INTO SMS_ABGROUPS (NAME, FOLDER_ID)  VALUES (?, ?)";
inline constexpr StringView kRenameGroup = u"UPDATE SMS_ABGROUPS SET NAME = ? WHERE ID = ?";
inline constexpr StringView kClearMembers = u"DELETE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = ?";
inline constexpr StringView kNameTaken = u"SELECT 1 FROM SMS_ABGROUPS WHERE NAME = ?";
inline constexpr StringView kCountFolderContacts =
    u"SELECT COUNT(1) AS TOTALRECORDS FROM SMS_ABCONTACTS WHERE FOLDER_ID = ?";
inline constexpr StringView kCountRemoteContacts =
    u"SELECT COUNT(1) AS TOTALRECORDS FROM V_ZUL$REMOTE_CONTACTS WHERE CATEGORY = "
    u"(SELECT REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS WHERE ID = ?)";
inline constexpr StringView kNameTakenByAnother =
    u"SELECT 1 FROM SMS_ABGROUPS WHERE NAME = ? AND ID <> ?";
inline constexpr StringView kInsertMember =
    u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (?, ?, ?)";
inline constexpr StringView kContact =
    u"SELECT FNAME, MOBILENO, COUNTRYCODE FROM SMS_ABCONTACTS WHERE ID =?";
inline constexpr StringView kFullName =
    u"SELECT FNAME, MNAME, LNAME, ORGANISATION FROM SMS_ABCONTACTS WHERE ID = ?";
inline constexpr StringView kGroup = u"SELECT NAME, FOLDER_ID FROM SMS_ABGROUPS WHERE ID = ?";
inline constexpr StringView kMemberships =
    u"SELECT CONTACT_ID, CONTACT_TYPE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = ?";
/// Shared and remote members of a group; the group id is passed twice. The text uses TO_CHAR for
/// every engine, so expanding a group fails where TO_CHAR is unknown and not rewritten.
inline constexpr StringView kExpandedMembers =
    u"SELECT TO_CHAR(ID) AS ID, FNAME, MOBILENO, COUNTRYCODE "
    u"FROM SMS_ABCONTACTS C,SMS_ABGROUPMAPS M "
    u"WHERE C.ID = M.CONTACT_ID AND M.GROUP_ID = ? AND M.CONTACT_TYPE = 'S' "
    u"UNION "
    u"SELECT CODE, NAME, MOBILENO, '' AS COUNTRYCODE "
    u"FROM V_ZUL$REMOTE_CONTACTS C, SMS_ABGROUPMAPS M "
    u"WHERE C.CODE = M.CONTACT_ID AND M.GROUP_ID = ? AND M.CONTACT_TYPE = 'R'";

/// Indices into Commands().
enum class Name : std::size_t {
  Folder,
  Folders,
  CountMembers,
  CountFolderGroups,
  GroupIdByName,
  InsertGroup,
  RenameGroup,
  ClearMembers,
  NameTaken,
  CountFolderContacts,
  CountRemoteContacts,
  NameTakenByAnother,
  InsertMember,
  Contact,
  ExpandedMembers,
  Group,
  Memberships,
  ContactsAmong,
  RemoteContactsAmong,
  ContactsAmongMany,
  RemoteContactsAmongMany,
  FullName,
};

/// Selects those of `count` contact ids that exist; one parameter each.
String ContactsAmong(std::size_t count);
/// The same for codes of remote contacts.
String RemoteContactsAmong(std::size_t count);

/// Parameter count of ContactsAmong and RemoteContactsAmong in Commands().
inline constexpr std::size_t kAmong = 100;
/// Parameter count of ContactsAmongMany and RemoteContactsAmongMany; within the limit of every
/// engine.
inline constexpr std::size_t kAmongMany = 500;

/// The prepared statements. Only the name of a new group depends on the dialect. All other texts
/// are narrow, to match the indexed columns of the servers.
const std::vector<CommandText>& Commands();

/// The picker lists groups too. The editor does not, because a group cannot be a member of a group.
enum class Purpose { EditGroup, PickRecipients };

// All throw as WithId does. The lists are empty for Dialect::None.

/// Contacts of a shared folder (0: outside any folder); for the picker also its groups.
String SharedCandidates(Dialect dialect, Purpose purpose, StringView folderId);
/// Remote contacts of the folder's mapped category.
String RemoteCandidates(Dialect dialect, Purpose purpose, StringView folderId);
/// Members of a group. The SQL text lists contacts only; the Oracle text remote contacts too.
String Members(Dialect dialect, StringView groupId);
/// Locks the group until the transaction ends, by an update that changes nothing: a SELECT that
/// locks is written differently for each engine. No row is affected if there is no such group.
String LockGroup(StringView groupId);
/// The members that kExpandedMembers finds, for several groups: GROUP_ID and its columns.
String MembersOfGroups(const std::vector<String>& groupIds);

}  // namespace ktrv::data::GroupQueries
