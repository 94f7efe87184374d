#include "tests/scripthost/UiInput.h"

#include <vector>

namespace ktrv::scripthost::UiInput {
namespace {

void Send(const std::vector<INPUT>& inputs) {
  // One by one: the mouse's place must be what the button finds.
  for (INPUT input : inputs) SendInput(1, &input, sizeof input);
}

INPUT MouseInput(DWORD flags) {
  INPUT input = {};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = flags;
  return input;
}

INPUT KeyInput(WORD key, DWORD flags) {
  INPUT input = {};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = key;
  input.ki.dwFlags = flags;
  return input;
}

INPUT UnitInput(wchar_t unit, DWORD flags) {
  INPUT input = KeyInput(0, KEYEVENTF_UNICODE | flags);
  input.ki.wScan = unit;
  return input;
}

/// Keys that are held while something is done.
class Held {
 public:
  explicit Held(std::vector<WORD> keys) : keys_(std::move(keys)) {
    for (const WORD key : keys_) Send({KeyInput(key, 0)});
  }
  ~Held() {
    for (const WORD key : keys_) Send({KeyInput(key, KEYEVENTF_KEYUP)});
  }
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;

 private:
  std::vector<WORD> keys_;
};

std::vector<WORD> KeysOf(UINT keys) {
  std::vector<WORD> held;
  if ((keys & MK_SHIFT) != 0) held.push_back(VK_SHIFT);
  if ((keys & MK_CONTROL) != 0) held.push_back(VK_CONTROL);
  return held;
}

void PointTo(HWND window, POINT at) {
  SetForegroundWindow(GetAncestor(window, GA_ROOT));
  ClientToScreen(window, &at);
  SetCursorPos(at.x, at.y);
  // A move of nothing makes the system tell the window where the mouse is.
  Send({MouseInput(MOUSEEVENTF_MOVE)});
}

/// Whether keys arrive at the window now. A thread remembers its focus while another program has
/// the keyboard.
bool HasKeyboard(HWND window) {
  if (GetForegroundWindow() != GetAncestor(window, GA_ROOT)) return false;
  GUITHREADINFO info = {};
  info.cbSize = sizeof info;
  GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
  return info.hwndFocus == window;
}

void PressKey(WORD key) {
  Send({KeyInput(key, 0), KeyInput(key, KEYEVENTF_KEYUP)});
}

/// The top-level window that is seen in the middle of this one's area.
HWND TopmostOver(HWND window) {
  RECT area = {};
  GetWindowRect(window, &area);
  const POINT middle = {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
  return GetAncestor(WindowFromPoint(middle), GA_ROOT);
}

std::wstring DescriptionOf(HWND window) {
  if (!window) return L"nothing";
  wchar_t name[64] = {}, title[128] = {};
  DWORD process = 0;
  GetClassNameW(window, name, 64);
  GetWindowTextW(window, title, 128);
  GetWindowThreadProcessId(window, &process);
  return std::wstring(name) + L" \"" + title + L"\" of process " + std::to_wstring(process);
}

}  // namespace

void BringToFront(HWND window) {
  SetForegroundWindow(window);
  SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

bool IsInFront(HWND window) {
  return GetForegroundWindow() == window && TopmostOver(window) == window;
}

std::wstring WhatIsInFrontOf(HWND window) {
  return DescriptionOf(GetForegroundWindow()) + L" is in the foreground, and " +
         DescriptionOf(TopmostOver(window)) + L" is seen where " + DescriptionOf(window) +
         L" should be";
}

void Click(HWND window, POINT at, UINT keys) {
  PointTo(window, at);
  const Held held(KeysOf(keys));
  Send({MouseInput(MOUSEEVENTF_LEFTDOWN), MouseInput(MOUSEEVENTF_LEFTUP)});
}

void ClickMiddle(HWND window) {
  RECT area = {};
  GetClientRect(window, &area);
  Click(window, {area.right / 2, area.bottom / 2}, 0);
}

void Point(HWND window, POINT at) {
  // From elsewhere, because a tip comes when the mouse has moved.
  PointTo(window, {at.x + 1, at.y});
  PointTo(window, at);
}

void ClickScreen(POINT at) {
  SetCursorPos(at.x, at.y);
  Send({MouseInput(MOUSEEVENTF_MOVE), MouseInput(MOUSEEVENTF_LEFTDOWN),
        MouseInput(MOUSEEVENTF_LEFTUP)});
}

void DoubleClick(HWND window, POINT at) {
  Click(window, at, 0);
  Send({MouseInput(MOUSEEVENTF_LEFTDOWN), MouseInput(MOUSEEVENTF_LEFTUP)});
}

void RightClick(HWND window, POINT at, UINT keys) {
  PointTo(window, at);
  const Held held(KeysOf(keys));
  Send({MouseInput(MOUSEEVENTF_RIGHTDOWN), MouseInput(MOUSEEVENTF_RIGHTUP)});
}

void Drag(HWND window, POINT from, POINT to, UINT keys) {
  constexpr int kSteps = 10;
  PointTo(window, from);
  const Held held(KeysOf(keys));
  // The window moves with the mouse perhaps, so the way is laid out on the screen beforehand.
  ClientToScreen(window, &from);
  ClientToScreen(window, &to);
  Send({MouseInput(MOUSEEVENTF_LEFTDOWN)});
  for (int step = 1; step <= kSteps; ++step) {
    SetCursorPos(from.x + (to.x - from.x) * step / kSteps,
                 from.y + (to.y - from.y) * step / kSteps);
    Send({MouseInput(MOUSEEVENTF_MOVE)});
    // As a hand does; moves that a window has not taken yet are merged into one.
    Sleep(20);
  }
  Send({MouseInput(MOUSEEVENTF_LEFTUP)});
}

void Type(HWND window, std::wstring_view text) {
  if (!HasKeyboard(window)) ClickMiddle(window);
  for (const wchar_t unit : text) Send({UnitInput(unit, 0), UnitInput(unit, KEYEVENTF_KEYUP)});
}

void Press(HWND window, WORD key, UINT keys) {
  if (!HasKeyboard(window)) ClickMiddle(window);
  const Held held(KeysOf(keys));
  PressKey(key);
}

void PressAnywhere(WORD key) {
  PressKey(key);
}

void Hold(HWND window, WORD key, int times) {
  if (!HasKeyboard(window)) ClickMiddle(window);
  for (; times > 0; --times) Send({KeyInput(key, 0)});
  Send({KeyInput(key, KEYEVENTF_KEYUP)});
}

void PressAlt(HWND window, WORD key) {
  SetForegroundWindow(GetAncestor(window, GA_ROOT));
  const Held held({VK_MENU});
  PressKey(key);
}

}  // namespace ktrv::scripthost::UiInput
