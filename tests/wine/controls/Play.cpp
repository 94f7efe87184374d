#include "tests/wine/controls/Play.h"

namespace ktrv::windows {

bool PumpUntil(const std::function<bool()>& condition) {
  const ULONGLONG deadline = GetTickCount64() + 30000;
  while (!condition()) {
    if (GetTickCount64() > deadline) return false;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    Pump();
  }
  return true;
}

void Pump() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

void PressKey(WORD key) {
  PostMessageW(GetFocus(), WM_KEYDOWN, key, 1);
  PostMessageW(GetFocus(), WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
  Pump();
}

namespace {

void Click(HWND window, POINT place, UINT down, WPARAM held) {
  // Controls ask for the pointer's place as well as for the message's.
  POINT onScreen = place;
  ClientToScreen(window, &onScreen);
  SetCursorPos(onScreen.x, onScreen.y);
  Pump();
  const LPARAM where = MAKELPARAM(place.x, place.y);
  PostMessageW(window, down, held, where);
  PostMessageW(window, down + 1, 0, where);
  Pump();
}

}  // namespace

void LeftClick(HWND window, POINT place) {
  Click(window, place, WM_LBUTTONDOWN, MK_LBUTTON);
}

void RightClick(HWND window, POINT place) {
  Click(window, place, WM_RBUTTONDOWN, MK_RBUTTON);
}

}  // namespace ktrv::windows
