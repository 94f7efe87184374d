#include "windows/controls/Keys.h"

#include <windows.h>

#include "controls/Input.h"

namespace ktrv::windows {

std::int16_t HeldKeys() {
  using namespace controls;
  int held = ShiftMask::None;
  if (GetKeyState(VK_SHIFT) < 0) held |= ShiftMask::Shift;
  if (GetKeyState(VK_CONTROL) < 0) held |= ShiftMask::Ctrl;
  if (GetKeyState(VK_MENU) < 0) held |= ShiftMask::Alt;
  return static_cast<std::int16_t>(held);
}

}  // namespace ktrv::windows
