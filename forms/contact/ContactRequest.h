#pragma once

#include <functional>
#include <optional>

#include "database/Connection.h"
#include "services/Enumerations.h"

namespace ktrv::forms {

/// Thrown when a new contact cannot be stored.
struct ContactRefused {
  String Message;  ///< for the user; empty if it was logged instead
};

/// Statements that the opener runs together with the insert of a new contact, on its connection and
/// in its transaction. Both throw Error or ContactRefused. They must not show anything, because
/// locks are held.
struct ContactCompanion {
  /// Before all other statements. May refuse; a contact that an earlier save has stored is saved
  /// nevertheless, without Store.
  std::function<void(database::Connection&)> Check = {};
  /// After the insert. Must be idempotent.
  std::function<void(database::Connection&, const String& contactId)> Store = {};
};

/// Arguments of the contact editor.
struct ContactRequest {
  ModeOfOperation Mode = ModeOfOperation::Add;
  TypeOfContact SharedMode = TypeOfContact::LocalContact;
  std::int16_t FolderId = 0;  ///< folder of a new contact; 0: the main folder
  String EditContactId = {};  ///< decimal id of the contact to edit
  String PresetContactName = {};
  String PresetMobileNo = {};
  ContactCompanion With = {};  ///< empty: nothing is stored together with the contact
};

/// A saved contact, as entered in the editor.
struct SavedContact {
  String Id;
  String Name;
  String Mobile;
  String Email;
  String Address;
  String Organisation;
};

/// Result of the contact editor.
struct ContactResult {
  TypeOfContact SharedMode;           ///< SharedContact after an attempt to save, else as opened
  String EditContactId;               ///< as opened; after saving a new contact its id
  String PresetMobileNo;              ///< initial text of a new contact's box
  std::optional<SavedContact> Saved;  ///< nullopt if closed without saving
};

}  // namespace ktrv::forms
