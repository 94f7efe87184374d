#pragma once

#include <cstdint>
#include <vector>

#include "controls/Image.h"
#include "windows/controls/Shape.h"

namespace ktrv::windows {

/// One shape of a picture in its colour.
struct Layer {
  std::uint32_t Color = 0;  ///< 0xRRGGBB
  Shape Form;
};

/// What a picture is drawn of, from the back to the front; nothing for Image::None.
std::vector<Layer> LayersOf(controls::Image image);

}  // namespace ktrv::windows
