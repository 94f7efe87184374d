#include "forms/addressbook/ItemEditors.h"

#include <limits>
#include <utility>

#include "forms/groups/frmGroupsNew.h"

namespace ktrv::forms {
namespace {

using Purpose = Session::Purpose;

/// The contact editor takes folders of 16 bits; nothing for others.
std::optional<std::int16_t> ShortId(StringView id) {
  const auto number = ParseInteger(id);
  if (!number || *number < 0 || *number > std::numeric_limits<std::int16_t>::max()) return {};
  return static_cast<std::int16_t>(*number);
}

}  // namespace

Session ItemEditors::OnShared() {
  session_.SharedMode = static_cast<std::int32_t>(TypeOfContact::SharedContact);
  session_.GroupType = static_cast<std::int32_t>(TypeOfGroup::SharedGroup);
  return session_.ForWindow();
}

bool ItemEditors::NewContact(StringView folderId, frmNewContact::Companion with) {
  const auto folder = ShortId(folderId);
  if (!folder) throw Error(ErrorNumber::Overflow, u"Overflow");
  Session own = OnShared();
  // The editor hands a new contact's id back only where no id stands, and what was preset for
  // another one is no start for this one.
  own.EditContactId.clear();
  own.PresetContactName.clear();
  own.PresetMobileNo.clear();
  frmNewContact editor(own);
  editor.Mode = ModeOfOperation::Add;
  editor.FolderId = *folder;
  editor.With = std::move(with);
  own.ShowModal(Purpose::Contact, editor);
  session_.Take(Purpose::Contact, own);
  return !own.SavedContactName.empty();
}

void ItemEditors::EditContact(const String& contactId, StringView folderId) {
  Session own = OnShared();
  own.EditContactId = contactId;
  frmNewContact editor(own);
  editor.Mode = ModeOfOperation::Modify;
  editor.FolderId = ShortId(folderId).value_or(0);  // a contact that is there keeps its folder
  own.ShowModal(Purpose::Contact, editor);
}

ItemEditors::GroupOutcome ItemEditors::NewGroup(const String& folderId) {
  Session own = OnShared();
  own.GroupId.clear();
  own.GroupName.clear();
  frmGroupsNew editor(own);
  editor.Mode = ModeOfOperation::Add;
  editor.FolderId = folderId;
  own.ShowModal(Purpose::Group, editor);
  if (own.GroupId.empty() && !editor.UnfinishedGroupId().empty()) {
    // It is in the database, so it is shown, and can be opened and finished.
    own.GroupId = editor.UnfinishedGroupId();
    own.GroupName = editor.UnfinishedGroupName();
  }
  session_.Take(Purpose::Group, own);
  return {.Saved = !own.GroupId.empty(), .HasOpenedContacts = editor.HasOpenedContacts()};
}

bool ItemEditors::EditGroup(const String& groupId, const String& name) {
  Session own = OnShared();
  own.GroupId = groupId;
  own.GroupName = name;
  frmGroupsNew editor(own);
  editor.Mode = ModeOfOperation::Modify;
  own.ShowModal(Purpose::Group, editor);
  session_.Take(Purpose::Group, own);
  return own.GroupId == groupId;  // empty after a cancel
}

bool ItemEditors::NewFolder() {
  // The editor's check box turns it into a remote one.
  return editors_.Folder(session_.Place(), {.FolderType = TypeOfFolder::SharedFolder})
      .Saved.has_value();
}

void ItemEditors::EditFolder(const String& folderId, TypeOfFolder type) {
  editors_.Folder(session_.Place(), {ModeOfOperation::Modify, type, folderId});
}

}  // namespace ktrv::forms
