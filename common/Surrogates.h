#pragma once

namespace ktrv {

/// The first and the second UTF-16 unit of a character that takes two.
constexpr bool IsHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool IsLowSurrogate(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

}  // namespace ktrv
