#pragma once

#include <windows.h>

namespace ktrv::windows {

/// A window class of this module, registered for the lifetime of the object. Use a function-local
/// static, which is destroyed when the DLL unloads. The system keeps the classes of an unloaded
/// DLL, and their windows would run freed code.
class WindowClass {
 public:
  struct Look {
    LPCWSTR Cursor = nullptr;  ///< a system cursor; null: the window procedure sets it
    int Color = -1;            ///< background as a COLOR_ constant; negative: not painted
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
