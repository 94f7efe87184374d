#pragma once

#include <cstdint>
#include <vector>

#include "controls/Image.h"
#include "windows/controls/Shape.h"

namespace ktrv::windows {

/// A shape and its colour.
struct Layer {
  std::uint32_t Color = 0;  ///< 0xRRGGBB
  Shape Form;
};

/// The layers of a picture from back to front; empty for Image::None.
std::vector<Layer> LayersOf(controls::Image image);

}  // namespace ktrv::windows
