#include "tests/wine/desktop/Desktop.h"

namespace ktrv::windows {

Desktop::Desktop() {
  constexpr ULONGLONG kPatience = 30'000;  // milliseconds
  constexpr DWORD kPause = 50;
  const ULONGLONG end = GetTickCount64() + kPatience;
  while (!(window_ = CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                     nullptr, nullptr)) &&
         GetTickCount64() < end) {
    Sleep(kPause);
  }
}

Desktop::~Desktop() {
  if (window_) DestroyWindow(window_);
}

}  // namespace ktrv::windows
