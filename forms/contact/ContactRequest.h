#pragma once

#include <functional>
#include <optional>

#include "database/Connection.h"
#include "services/Enumerations.h"

namespace ktrv::forms {

/// Thrown when a new contact cannot be stored where it was to go.
struct ContactRefused {
  String Message;  ///< for the user; empty when it was logged instead
};

/// What the opener stores together with a new contact, on the connection and in the transaction of
/// its row. Both throw Error or ContactRefused; nothing may be shown, as locks are held.
struct ContactCompanion {
  std::function<void(database::Connection&)> Check = {};  ///< whether it can be stored
  /// Stores it, unless it is stored already.
  std::function<void(database::Connection&, const String& contactId)> Store = {};
};

/// What the contact editor is opened for.
struct ContactRequest {
  ModeOfOperation Mode = ModeOfOperation::Add;
  TypeOfContact SharedMode = TypeOfContact::LocalContact;
  std::int16_t FolderId = 0;  ///< of a new contact; 0 is the main folder
  String EditContactId = {};  ///< decimal, of the contact to edit
  String PresetContactName = {};
  String PresetMobileNo = {};
  ContactCompanion With = {};  ///< empty when the new contact stands alone
};

/// A contact as it was saved, put together from the editor's boxes.
struct SavedContact {
  String Id;
  String Name;
  String Mobile;
  String Email;
  String Address;
  String Organisation;
};

/// What the contact editor leaves.
struct ContactResult {
  TypeOfContact SharedMode;  ///< shared once it came to saving, whatever was opened
  String EditContactId;      ///< as it was opened with; of a new contact that was saved its id
  String PresetMobileNo;     ///< what a new contact's box began with
  std::optional<SavedContact> Saved;  ///< nothing when it was closed without saving
};

}  // namespace ktrv::forms
