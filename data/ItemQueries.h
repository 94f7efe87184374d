#pragma once

#include "data/IdText.h"

/// Texts of the address book window's item commands, the same for every engine and each a statement
/// of its own. All throw as WithId does.
namespace ktrv::data::ItemQueries {

/// Makes a contact a member of a group. Names no columns: the values stand in the table's order.
inline String InsertMember(StringView groupId, StringView contactId) {
  return WithId(WithId(u"INSERT INTO SMS_ABGROUPMAPS VALUES({group},{id}, 'S')", contactId),
                groupId, u"{group}");
}
/// Whether it is one.
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

/// The groups in a folder, which stands in the way of its deletion.
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
/// The column is text, and the type is not tested: a remote contact's membership whose code is the
/// contact's id goes too.
inline String DeleteMemberships(StringView contactId) {
  return WithId(u"DELETE FROM SMS_ABGROUPMAPS WHERE CONTACT_ID = '{id}'", contactId);
}

}  // namespace ktrv::data::ItemQueries
