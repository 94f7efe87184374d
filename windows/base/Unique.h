#pragma once

#include <windows.h>

#include <utility>

namespace ktrv::windows {

/// Owns one handle and releases it with `close`.
template <class Handle, auto close>
class Unique {
 public:
  Unique() = default;
  explicit Unique(Handle handle) : handle_(handle) {}
  Unique(Unique&& other) noexcept : handle_(std::exchange(other.handle_, Handle{})) {}
  Unique& operator=(Unique&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~Unique() {
    if (handle_) close(handle_);
  }

  Handle Get() const { return handle_; }
  explicit operator bool() const { return handle_ != Handle{}; }
  Handle Release() { return std::exchange(handle_, Handle{}); }

 private:
  Handle handle_{};
};

inline void GiveBackObject(HGDIOBJ object) {
  DeleteObject(object);
}
inline void GiveBackIcon(HICON icon) {
  DestroyIcon(icon);
}
inline void GiveBackMenu(HMENU menu) {
  DestroyMenu(menu);
}
inline void GiveBackHook(HHOOK hook) {
  UnhookWindowsHookEx(hook);
}
inline void GiveBackWindow(HWND window) {
  DestroyWindow(window);
}

using UniqueFont = Unique<HFONT, GiveBackObject>;
using UniqueBitmap = Unique<HBITMAP, GiveBackObject>;
using UniqueBrush = Unique<HBRUSH, GiveBackObject>;
using UniqueIcon = Unique<HICON, GiveBackIcon>;
using UniqueMenu = Unique<HMENU, GiveBackMenu>;
using UniqueHook = Unique<HHOOK, GiveBackHook>;
using UniqueWindow = Unique<HWND, GiveBackWindow>;

}  // namespace ktrv::windows
