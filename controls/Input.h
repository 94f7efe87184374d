#pragma once

#include <cstdint>

/// Codes of keys and mouse buttons in events.
namespace ktrv::controls {

enum class MouseButton : std::int16_t { Left = 1, Right = 2, Middle = 4 };

/// Modifier keys, as a bit mask.
namespace ShiftMask {
inline constexpr std::int16_t None = 0;
inline constexpr std::int16_t Shift = 1;
inline constexpr std::int16_t Ctrl = 2;
inline constexpr std::int16_t Alt = 4;
}  // namespace ShiftMask

namespace KeyCode {
inline constexpr std::int16_t Enter = 13;
inline constexpr std::int16_t Escape = 27;
inline constexpr std::int16_t Down = 40;
inline constexpr std::int16_t Delete = 46;
inline constexpr std::int16_t F2 = 113;
inline constexpr std::int16_t F3 = 114;
inline constexpr std::int16_t F5 = 116;
}  // namespace KeyCode

/// The mouse pointer over a form or control.
enum class MousePointer { Default, Hourglass, SizeWestEast };

}  // namespace ktrv::controls
