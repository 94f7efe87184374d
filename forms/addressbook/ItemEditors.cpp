#include "forms/addressbook/ItemEditors.h"

#include <limits>

#include "forms/contact/frmNewContact.h"
#include "forms/folder/frmSelectFolder.h"
#include "forms/groups/frmGroupsNew.h"

namespace ktrv::forms {
namespace {

using Kind = ModalDialogs::Kind;

/// The contact editor takes folders of 16 bits; nothing for others.
std::optional<std::int16_t> ShortId(StringView id) {
  const auto number = ParseInteger(id);
  if (!number || *number < 0 || *number > std::numeric_limits<std::int16_t>::max()) return {};
  return static_cast<std::int16_t>(*number);
}

}  // namespace

void ItemEditors::WorkOnShared() {
  session_.SharedMode = static_cast<std::int32_t>(TypeOfContact::SharedContact);
  session_.GroupType = static_cast<std::int32_t>(TypeOfGroup::SharedGroup);
}

bool ItemEditors::NewContact(StringView folderId) {
  const auto folder = ShortId(folderId);
  if (!folder) throw Error(ErrorNumber::Overflow, u"Overflow");
  // The editor hands a new contact's id back only where no id stands, and what a host preset for a
  // contact of its own is no start for this one.
  session_.EditContactId.clear();
  session_.PresetContactName.clear();
  session_.PresetMobileNo.clear();
  WorkOnShared();
  frmNewContact editor(session_);
  editor.Mode = ModeOfOperation::Add;
  editor.FolderId = *folder;
  session_.Modal.Show(Kind::Contact, editor);
  return !session_.SavedContactName.empty();
}

void ItemEditors::EditContact(const String& contactId, StringView folderId) {
  session_.EditContactId = contactId;
  WorkOnShared();
  frmNewContact editor(session_);
  editor.Mode = ModeOfOperation::Modify;
  editor.FolderId = ShortId(folderId).value_or(0);  // a contact that is there keeps its folder
  session_.Modal.Show(Kind::Contact, editor);
}

ItemEditors::GroupOutcome ItemEditors::NewGroup(const String& folderId) {
  session_.GroupId.clear();
  session_.GroupName.clear();
  WorkOnShared();
  frmGroupsNew editor(session_);
  editor.Mode = ModeOfOperation::Add;
  editor.FolderId = folderId;
  session_.Modal.Show(Kind::Group, editor);
  return {.Saved = !session_.GroupId.empty(), .HasOpenedContacts = editor.HasOpenedContacts()};
}

bool ItemEditors::EditGroup(const String& groupId, const String& name) {
  session_.GroupId = groupId;
  session_.GroupName = name;
  WorkOnShared();
  frmGroupsNew editor(session_);
  editor.Mode = ModeOfOperation::Modify;
  session_.Modal.Show(Kind::Group, editor);
  return session_.GroupId == groupId;  // empty after a cancel
}

bool ItemEditors::NewFolder() {
  // The editor's check box turns it into a remote one.
  session_.FolderType = static_cast<std::int32_t>(TypeOfFolder::SharedFolder);
  frmSelectFolder editor(session_);
  editor.Mode = ModeOfOperation::Add;
  session_.Modal.Show(Kind::Folder, editor);
  return !session_.SavedFolderId.empty();
}

void ItemEditors::EditFolder(const String& folderId, TypeOfFolder type) {
  session_.FolderType = static_cast<std::int32_t>(type);
  frmSelectFolder editor(session_);
  editor.Mode = ModeOfOperation::Modify;
  editor.FolderIdText = folderId;
  session_.Modal.Show(Kind::Folder, editor);
}

}  // namespace ktrv::forms
