#pragma once

#include <cstdint>

#include "common/Text.h"

namespace ktrv {

/// All 64 bits of an integer mixed; different ones stay different, and 0 stays 0.
std::uint64_t Mixed(std::uint64_t value);

/// A hash of the text with 64 bits on every platform, unlike std::hash. \param start another one
/// gives an independent hash; 0xCBF29CE484222325 is FNV's
std::uint64_t Fingerprint(StringView text, std::uint64_t start = 0xCBF29CE484222325);

}  // namespace ktrv
