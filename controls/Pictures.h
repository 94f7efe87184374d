#pragma once

#include <cstdint>
#include <vector>

#include "controls/Image.h"

namespace ktrv::controls {

/// The picture as a square of `size` pixels, row by row from the top. A pixel is 0xAARRGGBB, its
/// colours not multiplied by alpha; 0 where the picture leaves it out.
std::vector<std::uint32_t> PixelsOf(Image image, int size);

}  // namespace ktrv::controls
