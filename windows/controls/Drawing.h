#pragma once

#include <windows.h>
#include <commctrl.h>

#include <span>

#include "controls/Image.h"
#include "windows/base/Unique.h"

namespace ktrv::windows {

inline void GiveBackImageList(HIMAGELIST list) {
  ImageList_Destroy(list);
}
using UniqueImageList = Unique<HIMAGELIST, GiveBackImageList>;

/// Draws the picture as a square of `size` pixels with transparency.
UniqueBitmap DrawBitmap(controls::Image image, int size);
UniqueIcon DrawIcon(controls::Image image, int size);
/// Draws the pictures in order; Image::None gives an empty one.
UniqueImageList DrawImageList(std::span<const controls::Image> images, int size);

}  // namespace ktrv::windows
