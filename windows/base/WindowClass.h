#pragma once

#include <windows.h>

namespace ktrv::windows {

/// A window class of this module, registered while this lives. Make it a local static: it then goes
/// with the module, because the system keeps the classes of a DLL that was unloaded, and windows of
/// such a class would run freed code.
class WindowClass {
 public:
  struct Look {
    LPCWSTR Cursor = nullptr;  ///< one of the system's; null: the procedure sets it
    int Color = -1;            ///< of the background, a COLOR_ constant; below 0: not painted
  };

  /// \param name must outlive the class. \throws Error OutOfMemory
  WindowClass(const wchar_t* name, WNDPROC procedure, Look look);
  ~WindowClass();
  WindowClass(const WindowClass&) = delete;
  WindowClass& operator=(const WindowClass&) = delete;

  const wchar_t* Name() const { return name_; }

 private:
  const wchar_t* const name_;
};

}  // namespace ktrv::windows
