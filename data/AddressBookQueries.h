#pragma once

#include <vector>

#include "data/CommandText.h"
#include "data/Dialect.h"

/// Texts of the address book window: its tree, its counts and its lists. All lists have the same
/// nine columns: id, NAME, SHARED, MOBILENO, EMAIL, ADDRESS, ORGANISATION, FOLDER_ID, CONTACTTYPE
/// (1 contact, 2 group, 3 remote contact).
namespace ktrv::data::AddressBookQueries {

// The tree. None of them says an order: nodes stand as the database returns them.
inline constexpr StringView kSharedFolders =
    u"SELECT ID , NAME , PARENTFOLDERID FROM SMS_ABFOLDERS WHERE TYPE = 'S'";
inline constexpr StringView kRemoteFolders =
    u"SELECT ID, NAME, PARENTFOLDERID, REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS WHERE TYPE = "
    u"'R'";
inline constexpr StringView kGroups = u"SELECT ID,NAME,FOLDER_ID FROM SMS_ABGROUPS";

// The counts: one integer parameter, one row with the column TOTALRECORDS.
inline constexpr StringView kCountFolderContacts =
    u"SELECT COUNT(1) AS TOTALRECORDS FROM SMS_ABCONTACTS WHERE FOLDER_ID = ?";
inline constexpr StringView kCountRemoteContacts =
    u"SELECT COUNT(1) AS TOTALRECORDS FROM V_ZUL$REMOTE_CONTACTS WHERE CATEGORY = "
    u"(SELECT REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS WHERE ID = ?)";
inline constexpr StringView kCountFolderGroups =
    u"SELECT COUNT(1) AS TOTALRECORDS FROM SMS_ABGROUPS WHERE FOLDER_ID = ? ";
inline constexpr StringView kCountGroupMembers =
    u"SELECT COUNT(1) AS TOTALRECORDS FROM SMS_ABGROUPMAPS WHERE GROUP_ID = ?";

/// Indices into Counts().
enum class Count : std::size_t { FolderContacts, RemoteContacts, FolderGroups, GroupMembers };
const std::vector<CommandText>& Counts();

// The lists; empty when the dialect is None, but the remote folder's, which is the same for all.
// Those with an id throw as WithId does.

/// Contacts and groups outside any folder.
String RootItems(Dialect dialect);
/// Contacts and groups of a shared folder. Unlike the root's text it does not guard against null:
/// in the SQL family a contact without a middle name is listed without a name.
String FolderItems(Dialect dialect, StringView folderId);
/// Remote contacts of the category that the folder maps, in the view's order.
String RemoteFolderItems(StringView folderId);
/// Members of a group. The SQL text takes every membership for the contact of that id, the Oracle
/// text only those of type 'S'.
String GroupItems(Dialect dialect, StringView groupId);

}  // namespace ktrv::data::AddressBookQueries
