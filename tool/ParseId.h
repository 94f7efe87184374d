#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include "common/Text.h"

namespace ktrv::tool {

/// An id as most databases compare it with a number: "500 " and "5E2" are 500. nullopt: it is not a
/// whole number of 32 bits, so no id.
inline std::optional<std::int64_t> ParseId(StringView text) {
  const auto number = ParseNumber(Trim(text));
  if (!number || std::trunc(*number) != *number) return std::nullopt;
  using Range = std::numeric_limits<std::int32_t>;
  if (*number < Range::min() || *number > Range::max()) return std::nullopt;
  return static_cast<std::int64_t>(*number);
}

}  // namespace ktrv::tool
