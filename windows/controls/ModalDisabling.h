#pragma once

#include <windows.h>

#include <vector>

namespace ktrv::windows {

/// Disables the other windows of this thread while a modal form or message box is open. Nestable;
/// if an outer one ends first, its windows stay disabled until the inner one ends.
class ModalDisabling {
 public:
  /// \param modal the form; null for a message box, which has no window yet
  /// \param owner owner of a message box; the box itself disables and enables it
  explicit ModalDisabling(HWND modal, HWND owner = nullptr);
  /// Enables the windows again. Must run while the modal window or the box's owner still exists.
  /// Otherwise the system finds no window of ours to activate and activates another program's.
  ~ModalDisabling();
  ModalDisabling(const ModalDisabling&) = delete;
  ModalDisabling& operator=(const ModalDisabling&) = delete;

  /// The innermost open one on this thread; null if there is none.
  static ModalDisabling* Innermost();

  HWND Modal() const { return modal_; }
  /// Disables another window until this one ends.
  void Add(HWND window);
  /// The window of the thread that the user can work with: visible and enabled; null if there is
  /// none.
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
