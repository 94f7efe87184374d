#pragma once

#include <cstdint>

namespace ktrv::windows {

/// The pressed modifier keys, as a ShiftMask.
std::int16_t HeldKeys();

/// Whether a key-down message is an auto-repeat. \param keyDown its lParam
constexpr bool IsRepeated(std::intptr_t keyDown) {
  constexpr std::intptr_t kWasDown = 0x40000000;
  return (keyDown & kWasDown) != 0;
}

}  // namespace ktrv::windows
