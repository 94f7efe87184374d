#pragma once

#include <memory>
#include <vector>

#include "component/Session.h"
#include "forms/Editors.h"
#include "forms/addressbook/frmAddressBook.h"

namespace ktrv {

/// The windows of one host thread. The address book window stays loaded between calls and is used
/// again for the same user and database; the editors are made afresh for each call.
class Dialogs {
 public:
  /// \param session the host's; must outlive the dialogs.
  explicit Dialogs(Session& session);
  ~Dialogs();
  Dialogs(const Dialogs&) = delete;
  Dialogs& operator=(const Dialogs&) = delete;

  /// Opens the editors on behalf of the host.
  forms::Editors Editors;

  /// The one address book window, made from the host's session when it is first asked for.
  forms::frmAddressBook& AddressBook();

  /// Shows the address book to the session's user. A window that shows another user's, or another
  /// database, is closed, and another one takes its place. The session's open connection becomes
  /// the new window's. \throws Error
  void ShowAddressBook();

  /// An object of the thread begins to use the windows.
  void Join() noexcept { ++users_; }
  /// \return whether it was the last one
  bool Leave() noexcept { return --users_ == 0; }

  /// Unloads the windows that are loaded. A failure of one does not keep the others; it is logged.
  /// The objects stay, because one of them may be in the middle of an event.
  void UnloadAll() noexcept;

 private:
  void Unload(controls::Form* form) noexcept;
  bool BelongsToSession(forms::frmAddressBook& book) const;

  Session& session_;
  int users_ = 0;
  std::unique_ptr<forms::frmAddressBook> book_;
  std::vector<std::unique_ptr<forms::frmAddressBook>>
      former_;  ///< closed, and perhaps in the middle of an event
};

}  // namespace ktrv
