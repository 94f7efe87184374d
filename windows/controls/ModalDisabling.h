#pragma once

#include <windows.h>

#include <vector>

namespace ktrv::windows {

/// Keeps the user from the other windows of this thread while a modal form is open.
class ModalDisabling {
 public:
  explicit ModalDisabling(HWND modal);
  /// Enables what it disabled. To be done while the modal window is still there: otherwise the
  /// system finds no window of ours to make active and takes another program's.
  ~ModalDisabling();
  ModalDisabling(const ModalDisabling&) = delete;
  ModalDisabling& operator=(const ModalDisabling&) = delete;

 private:
  static BOOL CALLBACK Disable(HWND window, LPARAM self);

  HWND modal_;
  HWND active_;
  std::vector<HWND> disabled_;
};

}  // namespace ktrv::windows
