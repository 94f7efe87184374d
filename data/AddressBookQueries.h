#pragma once

#include <vector>

#include "data/CommandText.h"
#include "data/Dialect.h"

/// Query texts of the address book window: tree, counts and lists. All lists have nine columns: id,
/// NAME, SHARED, MOBILENO, EMAIL, ADDRESS, ORGANISATION, FOLDER_ID, CONTACTTYPE (1 contact, 2
/// group, 3 remote contact).
namespace ktrv::data::AddressBookQueries {

// The tree. No ORDER BY: nodes appear in the order of the rows.
inline constexpr StringView kSharedFolders =
    u"SELECT ID , NAME , PARENTFOLDERID FROM SMS_ABFOLDERS WHERE TYPE = 'S'";
inline constexpr StringView kRemoteFolders =
    u"SELECT ID, NAME, PARENTFOLDERID, REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS WHERE TYPE = "
    u"'R'";
inline constexpr StringView kGroups = u"SELECT ID,NAME,FOLDER_ID FROM SMS_ABGROUPS";

// The counts: one integer parameter; one row with the column TOTALRECORDS.
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

// The lists. They are empty for Dialect::None, except RemoteFolderItems, whose text is the same for
// every dialect. Those with an id throw as WithId does.

/// Contacts and groups outside any folder.
String RootItems(Dialect dialect);
/// Contacts and groups of a shared folder. Unlike RootItems it does not replace nulls: in the SQL
/// text a contact without a middle name has a null NAME.
String FolderItems(Dialect dialect, StringView folderId);
/// Remote contacts of the folder's mapped category, in the view's order.
String RemoteFolderItems(StringView folderId);
/// Members of a group. The SQL text joins every membership to the contact with that id; the Oracle
/// text only memberships of type 'S'.
String GroupItems(Dialect dialect, StringView groupId);

}  // namespace ktrv::data::AddressBookQueries
