#pragma once

#include <cstdint>
#include <vector>

#include "controls/Image.h"

namespace ktrv::controls {

/// Renders the picture as a square of `size` by `size` pixels, top-down. Pixels are 0xAARRGGBB with
/// straight alpha; 0 where the picture is transparent.
std::vector<std::uint32_t> PixelsOf(Image image, int size);

}  // namespace ktrv::controls
