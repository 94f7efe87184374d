#include "windows/controls/Drawing.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "windows/controls/Pictures.h"

namespace ktrv::windows {

namespace {

/// Places that are tried along each side of a pixel to find how much of it a shape covers.
constexpr int kSamples = 8;

int CoverageOf(const Shape& shape, int column, int row, int size) {
  int covered = 0;
  for (int y = 0; y < kSamples; ++y) {
    for (int x = 0; x < kSamples; ++x) {
      const Dot place{(column + (x + 0.5) / kSamples) * 16 / size,
                      (row + (y + 0.5) / kSamples) * 16 / size};
      covered += Covers(shape, place) ? 1 : 0;
    }
  }
  return covered * 255 / (kSamples * kSamples);
}

/// A colour of 0xRRGGBB laid over a pixel of 0xAARRGGBB whose colours are multiplied by alpha.
std::uint32_t Over(std::uint32_t pixel, std::uint32_t color, int coverage) {
  const auto part = static_cast<std::uint32_t>(coverage);
  std::uint32_t result = 0;
  for (int shift = 0; shift < 32; shift += 8) {
    const std::uint32_t front = shift == 24 ? 255 : (color >> shift) & 0xFF;
    const std::uint32_t back = (pixel >> shift) & 0xFF;
    result |= ((front * part + back * (255 - part) + 127) / 255) << shift;
  }
  return result;
}

void Fill(std::span<std::uint32_t> pixels, int size, const Layer& layer) {
  const Shape shape = Snapped(layer.Form, size);
  for (int row = 0; row < size; ++row) {
    for (int column = 0; column < size; ++column) {
      const int place = row * size + column;
      std::uint32_t& pixel = pixels[static_cast<std::size_t>(place)];
      pixel = Over(pixel, layer.Color, CoverageOf(shape, column, row, size));
    }
  }
}

/// Image lists and icons take colours that are not multiplied by alpha.
std::uint32_t Straight(std::uint32_t pixel) {
  const std::uint32_t alpha = pixel >> 24;
  if (alpha == 0) return 0;
  std::uint32_t result = alpha << 24;
  for (int shift = 0; shift < 24; shift += 8) {
    result |= std::min(((pixel >> shift) & 0xFF) * 255 / alpha, 255U) << shift;
  }
  return result;
}

}  // namespace

UniqueBitmap DrawBitmap(controls::Image image, int size) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = size;
  info.bmiHeader.biHeight = -size;  // from the top
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  UniqueBitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (!bitmap) return bitmap;
  const std::span pixels(static_cast<std::uint32_t*>(bits), static_cast<std::size_t>(size * size));
  for (const Layer& layer : LayersOf(image)) Fill(pixels, size, layer);
  std::transform(pixels.begin(), pixels.end(), pixels.begin(), &Straight);
  return bitmap;
}

UniqueIcon DrawIcon(controls::Image image, int size) {
  const UniqueBitmap color = DrawBitmap(image, size);
  // The transparency stands in the colours; the mask only has to be there, all clear. Its rows are
  // whole words.
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
