#pragma once

#include <memory>
#include <vector>

#include "component/Session.h"
#include "forms/Editors.h"
#include "forms/addressbook/frmAddressBook.h"

namespace ktrv {

/// The windows of one host thread. The address book window stays loaded between calls and is reused
/// for the same user and database. Editors are created for each call.
class Dialogs {
 public:
  /// \param session the host's; must outlive the dialogs.
  explicit Dialogs(Session& session);
  ~Dialogs();
  Dialogs(const Dialogs&) = delete;
  Dialogs& operator=(const Dialogs&) = delete;

  /// Opens the editors on behalf of the host.
  forms::Editors Editors;

  /// The address book window; created from the session if there is none.
  forms::frmAddressBook& AddressBook();

  /// Shows the address book to the session's user. A window of another user or database is closed
  /// and replaced. The session's open connection moves to a window that is not loaded yet;
  /// otherwise it is closed. \throws Error
  void ShowAddressBook();

  /// Registers one more object of the thread as a user of the windows.
  void Join() noexcept { ++users_; }
  /// Reverses one Join. \return true for the last object
  bool Leave() noexcept { return --users_ == 0; }

  /// Unloads all loaded windows. A failure is logged and does not stop the others. The objects stay
  /// alive because one of them may be handling an event.
  void UnloadAll() noexcept;

 private:
  void Unload(controls::Form* form) noexcept;
  static bool BelongsTo(forms::frmAddressBook& book, const Workplace& host);

  Session& session_;
  int users_ = 0;
  std::unique_ptr<forms::frmAddressBook> book_;
  std::vector<std::unique_ptr<forms::frmAddressBook>>
      former_;  ///< closed; may still be handling an event
};

}  // namespace ktrv
