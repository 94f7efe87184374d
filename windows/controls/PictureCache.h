#pragma once

#include <map>

#include "windows/controls/Drawing.h"

namespace ktrv::windows {

/// A cache of icons by picture and size.
class PictureCache {
 public:
  /// Draws the picture centred in the cell, clipped to it. \param size pixels
  void Draw(HDC target, controls::Image image, const RECT& cell, int size);

 private:
  std::map<std::pair<controls::Image, int>, UniqueIcon> icons_;
};

}  // namespace ktrv::windows
