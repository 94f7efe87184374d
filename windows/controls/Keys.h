#pragma once

#include <cstdint>

namespace ktrv::windows {

/// The keys held now, as a ShiftMask.
std::int16_t HeldKeys();

/// Whether a key-down message, whose lParam this is, comes again from a key that is held.
constexpr bool IsRepeated(std::intptr_t keyDown) {
  constexpr std::intptr_t kWasDown = 0x40000000;
  return (keyDown & kWasDown) != 0;
}

}  // namespace ktrv::windows
