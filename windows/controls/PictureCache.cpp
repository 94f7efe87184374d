#include "windows/controls/PictureCache.h"

namespace ktrv::windows {

void PictureCache::Draw(HDC target, controls::Image image, const RECT& cell, int size) {
  UniqueIcon& icon = icons_[{image, size}];
  if (!icon) icon = DrawIcon(image, size);
  const int left = cell.left + (cell.right - cell.left - size) / 2;
  const int top = cell.top + (cell.bottom - cell.top - size) / 2;
  const int saved = SaveDC(target);
  IntersectClipRect(target, cell.left, cell.top, cell.right, cell.bottom);
  DrawIconEx(target, left, top, icon.Get(), size, size, 0, nullptr, DI_NORMAL);
  RestoreDC(target, saved);
}

}  // namespace ktrv::windows
