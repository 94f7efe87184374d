#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace ktrv::windows {

/// What a screen reader hears of a window, or of a part of it.
struct Heard {
  std::wstring Name{};
  std::wstring Value{};
  std::wstring Description{};
  LONG Role = 0;
  LONG State = 0;

  bool Is(LONG state) const { return (State & state) == state; }
};

/// \param part 0: the window itself
Heard Hear(HWND window, LONG part = 0);
std::vector<Heard> HearParts(HWND window);
/// The part that has the keyboard; -1 for none.
LONG HearFocus(HWND window);
/// The number of the part at the middle of another one.
LONG HearAtMiddleOf(HWND window, LONG part);

}  // namespace ktrv::windows
