#include "controls/Pictures.h"

#include <algorithm>

#include "controls/Shape.h"

namespace ktrv::controls {

namespace {

/// A shape and its colour.
struct Layer {
  std::uint32_t Color = 0;  ///< 0xRRGGBB
  Shape Form;
};
using Layers = std::vector<Layer>;

constexpr std::uint32_t kWhite = 0xFFFFFF;
constexpr std::uint32_t kInk = 0x5A6B7B;
constexpr std::uint32_t kPale = 0xC3D3E2;
constexpr std::uint32_t kBlue = 0x2F74C0;
constexpr std::uint32_t kDarkBlue = 0x1F5391;
constexpr std::uint32_t kTeal = 0x2A9D8F;
constexpr std::uint32_t kAmber = 0xF2B441;
constexpr std::uint32_t kDarkAmber = 0xD08F1F;
constexpr std::uint32_t kLightAmber = 0xFFD477;
constexpr std::uint32_t kGreen = 0x3C9A44;
constexpr std::uint32_t kRed = 0xD0392E;

Layers operator+(Layers back, const Layers& front) {
  back.insert(back.end(), front.begin(), front.end());
  return back;
}

/// Head and shoulders. \param floor the lower edge of the shoulders
Layers Person(Dot head, double radius, double floor, std::uint32_t color) {
  return {{color, Ellipse{head, radius, radius}},
          {color, Ellipse{{head.X, floor}, radius * 1.75, floor - head.Y - radius - 0.5, floor}}};
}

Layers Card() {
  return Layers{{kInk, Box{1, 3, 15, 13, 1.2}}, {kWhite, Box{2, 4, 14, 12, 0.5}}} +
         Person({5.5, 6.6}, 1.5, 11, kBlue) +
         Layers{{kInk, Box{9, 6, 13, 7}}, {kInk, Box{9, 8, 13, 9}}, {kPale, Box{9, 10, 12, 11}}};
}

Layers Folder() {
  return {
      {kDarkAmber, Polygon{{{1, 4.2}, {1.8, 3}, {6, 3}, {7.5, 4.6}, {15, 4.6}, {15, 7}, {1, 7}}}},
      {kDarkAmber, Box{1, 5, 15, 14, 1}},
      {kAmber, Box{2, 7, 14, 13, 0.4}},
      {kLightAmber, Box{2, 6, 14, 7}}};
}

Layers Globe() {
  return {{kWhite, Ellipse{{11.2, 11.2}, 4.8, 4.8}},
          {kTeal, Ellipse{{11.2, 11.2}, 4, 4}},
          {kWhite, Arc{{11.2, 11.2}, 1.9, 0.8}},
          {kTeal, Box{10.6, 8, 11.8, 14.4}},
          {kWhite, Line{{7.6, 11.2}, {14.8, 11.2}, 0.8}},
          {kWhite, Line{{11.2, 7.6}, {11.2, 14.8}, 0.8}}};
}

Layers Plus() {
  return {{kWhite, Ellipse{{11.5, 11.5}, 4.5, 4.5}},
          {kGreen, Ellipse{{11.5, 11.5}, 3.8, 3.8}},
          {kWhite, Line{{9.4, 11.5}, {13.6, 11.5}, 1.3}},
          {kWhite, Line{{11.5, 9.4}, {11.5, 13.6}, 1.3}}};
}

Layers AddressBook() {
  return Layers{{kDarkBlue, Box{2, 1, 14, 15, 1.2}},
                {kBlue, Box{4, 2, 13, 14, 0.6}},
                {kAmber, Box{14, 3, 15, 6}},
                {kTeal, Box{14, 7, 15, 10}}} +
         Person({8.5, 6}, 1.8, 12, kWhite);
}

Layers People() {
  return Person({11, 5.2}, 2.1, 12.6, 0x8FB8E3) +
         Layers{{kWhite, Ellipse{{6, 6.2}, 3, 3}}, {kWhite, Ellipse{{6, 14}, 5, 5.6, 14}}} +
         Person({6, 6.2}, 2.4, 14, kBlue);
}

Layers Page() {
  return {{kInk, Box{2, 1, 12, 15, 0.8}},
          {kWhite, Box{3, 2, 11, 14, 0.2}},
          {kBlue, Box{4, 4, 10, 5}},
          {kPale, Box{4, 7, 10, 8}},
          {kPale, Box{4, 9, 8, 10}},
          {kWhite, Line{{8.2, 13.2}, {14, 7.4}, 4}},
          {kAmber, Line{{9, 12.4}, {13.8, 7.6}, 2.4}},
          {kInk, Polygon{{{7.2, 14.4}, {7.9, 11.6}, {10, 13.7}}}}};
}

Layers Cross() {
  return {{kRed, Line{{3.6, 3.6}, {12.4, 12.4}, 2.4}}, {kRed, Line{{12.4, 3.6}, {3.6, 12.4}, 2.4}}};
}

Layers RoundArrow() {
  return {{kGreen, Arc{{8, 8.4}, 5, 2, 0, 285}},
          {kGreen, Polygon{{{8.6, 0.2}, {8.6, 7}, {13.2, 3.6}}}}};
}

Layers Tick() {
  return {{kWhite, Line{{3.6, 8.6}, {6.6, 11.8}, 4}},
          {kWhite, Line{{6.6, 11.8}, {12.2, 4.6}, 4}},
          {kGreen, Line{{3.6, 8.6}, {6.6, 11.8}, 2}},
          {kGreen, Line{{6.6, 11.8}, {12.2, 4.6}, 2}}};
}

Layers Arrow(bool up) {
  if (up) return {{kInk, Polygon{{{3.5, 10.5}, {8, 5.5}, {12.5, 10.5}}}}};
  return {{kInk, Polygon{{{3.5, 5.5}, {8, 10.5}, {12.5, 5.5}}}}};
}

/// The layers of a picture from back to front; empty for Image::None.
Layers LayersOf(Image image) {
  switch (image) {
    case Image::SharedContacts:
      return AddressBook();
    case Image::Group:
      return People();
    case Image::Folder:
      return Folder();
    case Image::RemoteFolder:
      return Folder() + Globe();
    case Image::Contact:
      return Card();
    case Image::RemoteContact:
      return Card() + Globe();
    case Image::SortAscending:
      return Arrow(true);
    case Image::SortDescending:
      return Arrow(false);
    case Image::New:
      return Card() + Plus();
    case Image::Properties:
      return Page();
    case Image::Delete:
      return Cross();
    case Image::Refresh:
      return RoundArrow();
    case Image::Tick:
      return Tick();
    case Image::None:
      break;
  }
  return {};
}

/// Samples per pixel side, to compute how much of a pixel a shape covers.
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

/// Alpha-blends a colour (0xRRGGBB) onto a premultiplied pixel (0xAARRGGBB).
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

void Fill(std::vector<std::uint32_t>& pixels, int size, const Layer& layer) {
  const Shape shape = Snapped(layer.Form, size);
  for (int row = 0; row < size; ++row) {
    for (int column = 0; column < size; ++column) {
      const int place = row * size + column;
      std::uint32_t& pixel = pixels[static_cast<std::size_t>(place)];
      pixel = Over(pixel, layer.Color, CoverageOf(shape, column, row, size));
    }
  }
}

/// Converts premultiplied to straight alpha.
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

std::vector<std::uint32_t> PixelsOf(Image image, int size) {
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(size * size));
  for (const Layer& layer : LayersOf(image)) Fill(pixels, size, layer);
  std::transform(pixels.begin(), pixels.end(), pixels.begin(), &Straight);
  return pixels;
}

}  // namespace ktrv::controls
