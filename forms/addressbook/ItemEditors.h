#pragma once

#include "forms/Editors.h"

namespace ktrv::forms {

/// Opens the editors for items of the address book, which are all shared. All methods throw Error.
class ItemEditors {
 public:
  /// Both must outlive the object.
  ItemEditors(const Workplace& place, Editors& editors) : place_(place), editors_(editors) {}

  /// \param folderId decimal id of the contact's folder. \param with what is stored together with
  /// the contact. \return the contact; nullopt if none was saved
  std::optional<SavedContact> NewContact(StringView folderId, ContactCompanion with);
  void EditContact(const String& contactId, StringView folderId);

  /// \return in Saved also a group whose save failed after its row was written
  GroupResult NewGroup(const String& folderId);
  /// \return the saved name; nullopt if the group was not saved
  std::optional<String> EditGroup(const String& groupId, const String& name);

  /// \return whether a folder was saved
  bool NewFolder();
  void EditFolder(const String& folderId, TypeOfFolder type);

 private:
  const Workplace& place_;
  Editors& editors_;
};

}  // namespace ktrv::forms
