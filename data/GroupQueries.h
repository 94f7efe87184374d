#pragma once

#include <vector>

#include "data/CommandText.h"
#include "data/Dialect.h"

/// Texts of the group editor and recipient picker. The lists have the six columns id, name, mobile
/// number, country code, kind (1 contact, 2 group, 3 remote contact) and mobile display, in this
/// order; their names differ between the texts.
namespace ktrv::data::GroupQueries {

// The prepared texts, which are the same for every engine.
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
inline constexpr StringView kGroup = u"SELECT NAME, FOLDER_ID FROM SMS_ABGROUPS WHERE ID = ?";
inline constexpr StringView kMemberships =
    u"SELECT CONTACT_ID, CONTACT_TYPE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = ?";
/// Both kinds of members of a group, its id given twice. One text for all: on an engine that has no
/// TO_CHAR, expanding a group fails.
inline constexpr StringView kExpandedMembers =
    u"SELECT TO_CHAR(ID) AS ID, FNAME, MOBILENO, COUNTRYCODE "
    u"FROM SMS_ABCONTACTS C,SMS_ABGROUPMAPS M "
    u"WHERE C.ID = M.CONTACT_ID AND M.GROUP_ID = ? AND M.CONTACT_TYPE = 'S' "
    u"UNION "
    u"SELECT CODE, NAME, MOBILENO, '' AS COUNTRYCODE "
    u"FROM V_ZUL$REMOTE_CONTACTS C, SMS_ABGROUPMAPS M "
    u"WHERE C.CODE = M.CONTACT_ID AND M.GROUP_ID = ? AND M.CONTACT_TYPE = 'R'";

/// What is asked besides the lists: indices into Commands().
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
};

/// Which of so many contacts there are; each id is a parameter.
String ContactsAmong(std::size_t count);
/// The same for remote contacts and their codes.
String RemoteContactsAmong(std::size_t count);

/// How many ids the commands ContactsAmong and RemoteContactsAmong take.
inline constexpr std::size_t kAmong = 100;
/// The same for ContactsAmongMany and RemoteContactsAmongMany: few enough for every engine.
inline constexpr std::size_t kAmongMany = 500;

/// The prepared texts. Only the name of a new group follows the dialect; every other text is narrow
/// always, as the servers that the commands were tuned for index their columns.
const std::vector<CommandText>& Commands();

/// Who asks for the candidates: the picker is offered groups too, the editor is not, since no group
/// can be a member of a group.
enum class Purpose { EditGroup, PickRecipients };

// The lists; empty when the dialect is None. They throw as WithId does.

/// Contacts of a shared folder (0: those outside any folder), for the picker with its groups.
String SharedCandidates(Dialect dialect, Purpose purpose, StringView folderId);
/// Remote contacts of the category that the folder maps.
String RemoteCandidates(Dialect dialect, Purpose purpose, StringView folderId);
/// Members of a group. The SQL text lists contacts only, the Oracle text remote members too.
String Members(Dialect dialect, StringView groupId);

}  // namespace ktrv::data::GroupQueries
