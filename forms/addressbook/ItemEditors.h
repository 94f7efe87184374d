#pragma once

#include "component/Session.h"
#include "forms/Editors.h"
#include "forms/contact/frmNewContact.h"

namespace ktrv::forms {

/// Opens the editors of the address book's items modally, each on a session of its own. All throw
/// Error.
class ItemEditors {
 public:
  ItemEditors(Session& session, Editors& editors) : session_(session), editors_(editors) {}

  /// \param folderId decimal id of the new contact's folder. \param with what is stored together
  /// with it. \return whether one was saved, which the session's six SavedContact… fields then
  /// describe
  bool NewContact(StringView folderId, frmNewContact::Companion with);
  void EditContact(const String& contactId, StringView folderId);

  struct GroupOutcome {
    bool Saved = false;  ///< under Session::GroupId and GroupName
    bool HasOpenedContacts = false;
  };
  GroupOutcome NewGroup(const String& folderId);
  /// \return whether it was saved, under Session::GroupName
  bool EditGroup(const String& groupId, const String& name);

  /// \return whether one was saved
  bool NewFolder();
  void EditFolder(const String& folderId, TypeOfFolder type);

 private:
  /// The session of an editor of shared items.
  Session OnShared();

  Session& session_;
  Editors& editors_;
};

}  // namespace ktrv::forms
