#pragma once

#include <memory>

#include "component/Session.h"
#include "forms/addressbook/frmAddressBook.h"

namespace ktrv {

/// The windows of one host thread. The address book window stays loaded between calls and is used
/// again; the dialogs are made afresh for each call and shown through Session::Modal.
class Dialogs {
 public:
  /// \param session must outlive the dialogs.
  explicit Dialogs(Session& session);
  ~Dialogs();
  Dialogs(const Dialogs&) = delete;
  Dialogs& operator=(const Dialogs&) = delete;

  /// The one address book window, made when it is first asked for.
  forms::frmAddressBook& AddressBook();

  /// Unloads the windows that are loaded. A failure of one does not keep the others; it is logged.
  /// The objects stay, because one of them may be in the middle of an event.
  void UnloadAll() noexcept;

 private:
  void Unload(controls::Form* form) noexcept;

  Session& session_;
  std::unique_ptr<forms::frmAddressBook> addressBook_;
};

}  // namespace ktrv
