#include "windows/controls/Drawing.h"

#include <algorithm>
#include <vector>

#include "controls/Pictures.h"

namespace ktrv::windows {

UniqueBitmap DrawBitmap(controls::Image image, int size) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = size;
  info.bmiHeader.biHeight = -size;  // top-down
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  UniqueBitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (!bitmap) return bitmap;
  std::ranges::copy(controls::PixelsOf(image, size), static_cast<std::uint32_t*>(bits));
  return bitmap;
}

UniqueIcon DrawIcon(controls::Image image, int size) {
  const UniqueBitmap color = DrawBitmap(image, size);
  // Transparency comes from the alpha channel. A mask is required nevertheless, all zero. Its rows
  // are WORD-aligned.
  const std::vector<BYTE> clear(static_cast<std::size_t>((size + 15) / 16 * 2 * size));
  const UniqueBitmap mask(CreateBitmap(size, size, 1, 1, clear.data()));
  ICONINFO icon{TRUE, 0, 0, mask.Get(), color.Get()};
  return UniqueIcon(CreateIconIndirect(&icon));
}

UniqueImageList DrawImageList(std::span<const controls::Image> images, int size) {
  UniqueImageList list(
      ImageList_Create(size, size, ILC_COLOR32, static_cast<int>(images.size()), 0));
  for (const controls::Image image : images) {
    ImageList_Add(list.Get(), DrawBitmap(image, size).Get(), nullptr);
  }
  return list;
}

}  // namespace ktrv::windows
