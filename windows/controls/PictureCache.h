#pragma once

#include <map>

#include "windows/controls/Drawing.h"

namespace ktrv::windows {

/// Pictures drawn once and shown often.
class PictureCache {
 public:
  /// In the middle of the cell, left out where it is wider than the cell. \param size pixels
  void Draw(HDC target, controls::Image image, const RECT& cell, int size);

 private:
  std::map<std::pair<controls::Image, int>, UniqueIcon> icons_;
};

}  // namespace ktrv::windows
