#pragma once

#include "forms/Editors.h"

namespace ktrv::forms {

/// Opens the editors of the address book's items, all of which are shared. All throw Error.
class ItemEditors {
 public:
  /// Both must outlive this.
  ItemEditors(const Workplace& place, Editors& editors) : place_(place), editors_(editors) {}

  /// \param folderId decimal id of the new contact's folder. \param with what is stored together
  /// with it. \return the contact; nothing when none was saved
  std::optional<SavedContact> NewContact(StringView folderId, ContactCompanion with);
  void EditContact(const String& contactId, StringView folderId);

  /// \return a group that was not finished as a saved one too: it is in the database
  GroupResult NewGroup(const String& folderId);
  /// \return the name under which it was saved; nothing when it was not
  std::optional<String> EditGroup(const String& groupId, const String& name);

  /// \return whether one was saved
  bool NewFolder();
  void EditFolder(const String& folderId, TypeOfFolder type);

 private:
  const Workplace& place_;
  Editors& editors_;
};

}  // namespace ktrv::forms
