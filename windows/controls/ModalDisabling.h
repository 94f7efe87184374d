#pragma once

#include <windows.h>

#include <vector>

namespace ktrv::windows {

/// Keeps the user from the other windows of this thread while a modal form or a message box is
/// open. They nest; when an outer one ends first, what it disabled stays disabled until the inner
/// one ends.
class ModalDisabling {
 public:
  /// \param modal the form; null for a message box, whose window is not there yet.
  /// \param owner of a message box, which the box itself disables and enables again.
  explicit ModalDisabling(HWND modal, HWND owner = nullptr);
  /// Enables what it disabled. To be done while the modal window, or the owner of the box, is still
  /// there: otherwise the system finds no window of ours to make active and takes another
  /// program's.
  ~ModalDisabling();
  ModalDisabling(const ModalDisabling&) = delete;
  ModalDisabling& operator=(const ModalDisabling&) = delete;

  /// The one that was opened last on this thread and is still open; null when none is.
  static ModalDisabling* Innermost();

  HWND Modal() const { return modal_; }
  /// Disables one more window until this ends.
  void Add(HWND window);
  /// The window that the user can work with meanwhile; null when there is none.
  static HWND Front();

 private:
  static BOOL CALLBACK Disable(HWND window, LPARAM self);

  HWND modal_;
  HWND owner_;
  HWND active_;
  std::vector<HWND> disabled_;
  ModalDisabling* outer_;
};

}  // namespace ktrv::windows
