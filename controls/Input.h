#pragma once

#include <cstdint>

/// The codes with which controls report keys and mouse buttons.
namespace ktrv::controls {

enum class MouseButton : std::int16_t { Left = 1, Right = 2, Middle = 4 };

/// Keys held with a key or a button, added up.
namespace ShiftMask {
inline constexpr std::int16_t None = 0;
inline constexpr std::int16_t Shift = 1;
inline constexpr std::int16_t Ctrl = 2;
inline constexpr std::int16_t Alt = 4;
}  // namespace ShiftMask

namespace KeyCode {
inline constexpr std::int16_t Enter = 13;
inline constexpr std::int16_t Escape = 27;
inline constexpr std::int16_t Delete = 46;
}  // namespace KeyCode

/// The pointer's shape over a form or a control.
enum class MousePointer { Default, Hourglass, SizeWestEast };

}  // namespace ktrv::controls
