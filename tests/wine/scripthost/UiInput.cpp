#include "tests/wine/scripthost/UiInput.h"

namespace ktrv::scripthost::UiInput {
namespace {

// List views and trees follow the mouse until the button goes up, so both always go together.
void Button(HWND window, UINT down, UINT up, WPARAM keys, POINT at) {
  const LPARAM place = MAKELPARAM(at.x, at.y);
  PostMessageW(window, down, keys, place);
  PostMessageW(window, up, 0, place);
}

}  // namespace

void ClickButton(HWND button) {
  PostMessageW(button, BM_CLICK, 0, 0);
}

void Click(HWND window, POINT at, UINT keys) {
  Button(window, WM_LBUTTONDOWN, WM_LBUTTONUP, MK_LBUTTON | keys, at);
}

void DoubleClick(HWND window, POINT at) {
  Click(window, at, 0);
  Button(window, WM_LBUTTONDBLCLK, WM_LBUTTONUP, MK_LBUTTON, at);
}

void RightClick(HWND window, POINT at) {
  Button(window, WM_RBUTTONDOWN, WM_RBUTTONUP, MK_RBUTTON, at);
}

void Type(HWND window, std::wstring_view text) {
  for (const wchar_t unit : text) {
    PostMessageW(window, WM_CHAR, unit, 1);
  }
}

void Press(HWND window, WPARAM key) {
  constexpr LPARAM kReleased = 0xC0000001;
  PostMessageW(window, WM_KEYDOWN, key, 1);
  PostMessageW(window, WM_KEYUP, key, kReleased);
}

}  // namespace ktrv::scripthost::UiInput
