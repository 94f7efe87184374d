#pragma once

#include <windows.h>

#include "common/Unique.h"

namespace ktrv::windows {

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
