#pragma once

#include <cstdint>

namespace ktrv::controls {

/// System colours: 0x80000000 plus the index of the Windows system colour.
inline constexpr std::uint32_t kSystemWindowBackground = 0x80000005;
inline constexpr std::uint32_t kSystemButtonFace = 0x8000000F;
inline constexpr std::uint32_t kSystemButtonShadow = 0x80000010;

/// 0x00BBGGRR: a find box whose text was not found, light red.
inline constexpr std::uint32_t kNotFoundBackground = 0x00D9D9FF;

}  // namespace ktrv::controls
