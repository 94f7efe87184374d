#pragma once

#include "data/IdText.h"

/// Query texts of the address book's item commands, the same for every engine, one statement each.
/// All throw as WithId does.
namespace ktrv::data::ItemQueries {

/// Adds a contact to a group. No column list: the values follow the table's column order.
inline String InsertMember(StringView groupId, StringView contactId) {
  return WithId(WithId(u"INSERT INTO SMS_ABGROUPMAPS VALUES({group},{id}, 'S')", contactId),
                groupId, u"{group}");
}
/// Selects the contact's membership in the group; no row when it is not a member.
inline String Membership(StringView groupId, StringView contactId) {
  return WithId(WithId(u"SELECT GROUP_ID FROM SMS_ABGROUPMAPS WHERE GROUP_ID = {group} AND "
                       u"CONTACT_ID = '{id}' AND CONTACT_TYPE = 'S'",
                       contactId),
                groupId, u"{group}");
}

inline String DeleteGroup(StringView groupId) {
  return WithId(u"DELETE FROM SMS_ABGROUPS WHERE ID = {id}", groupId);
}
inline String DeleteMembers(StringView groupId) {
  return WithId(u"DELETE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = {id}", groupId);
}

/// The groups in a folder; a folder with groups is not deleted.
inline String GroupsInFolder(StringView folderId) {
  return WithId(u"SELECT ID FROM SMS_ABGROUPS WHERE FOLDER_ID = {id}", folderId);
}
inline String DeleteFolderContacts(StringView folderId) {
  return WithId(u"DELETE FROM SMS_ABCONTACTS WHERE FOLDER_ID = {id}", folderId);
}
inline String DeleteFolder(StringView folderId) {
  return WithId(u"DELETE FROM SMS_ABFOLDERS WHERE ID = {id}", folderId);
}

inline String DeleteContact(StringView contactId) {
  return WithId(u"DELETE FROM SMS_ABCONTACTS WHERE ID = {id}", contactId);
}
/// CONTACT_ID is text and CONTACT_TYPE is not tested: memberships of a remote contact whose code
/// equals the contact's id are deleted too.
inline String DeleteMemberships(StringView contactId) {
  return WithId(u"DELETE FROM SMS_ABGROUPMAPS WHERE CONTACT_ID = '{id}'", contactId);
}

}  // namespace ktrv::data::ItemQueries
