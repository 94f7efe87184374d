#include "controls/Pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <set>

namespace ktrv::controls {
namespace {

constexpr std::array kPictures{Image::SharedContacts,
                               Image::Group,
                               Image::Folder,
                               Image::RemoteFolder,
                               Image::Contact,
                               Image::RemoteContact,
                               Image::SortAscending,
                               Image::SortDescending,
                               Image::New,
                               Image::Properties,
                               Image::Delete,
                               Image::Refresh,
                               Image::Tick};
constexpr std::array kSizes{16, 19, 20, 24, 32, 48};

std::uint32_t AlphaOf(std::uint32_t pixel) {
  return pixel >> 24;
}

std::uint32_t PixelAt(const std::vector<std::uint32_t>& pixels, int size, int column, int row) {
  const int index = row * size + column;
  return pixels.at(static_cast<std::size_t>(index));
}

TEST(PicturesTest, NoneIsClear) {
  EXPECT_EQ(PixelsOf(Image::None, 16), std::vector<std::uint32_t>(256));
}

TEST(PicturesTest, EachIsDrawnAtEachSizeAndLeavesTheCornersClear) {
  for (const Image image : kPictures) {
    for (const int size : kSizes) {
      SCOPED_TRACE(testing::Message() << "picture " << static_cast<int>(image) << " of " << size);
      const auto pixels = PixelsOf(image, size);
      ASSERT_EQ(pixels.size(), static_cast<std::size_t>(size * size));
      const auto opaque = std::count_if(pixels.begin(), pixels.end(),
                                        [](std::uint32_t pixel) { return AlphaOf(pixel) == 255; });
      EXPECT_GT(opaque, size * size / 30);
      for (const int row : {0, size - 1}) {
        for (const int column : {0, size - 1}) EXPECT_EQ(PixelAt(pixels, size, column, row), 0U);
      }
    }
  }
}

TEST(PicturesTest, EachIsAnother) {
  std::set<std::vector<std::uint32_t>> drawn;
  for (const Image image : kPictures) drawn.insert(PixelsOf(image, 16));
  EXPECT_EQ(drawn.size(), kPictures.size());
}

TEST(PicturesTest, TheArrowsAreEachOtherUpsideDown) {
  const auto up = PixelsOf(Image::SortAscending, 16);
  const auto down = PixelsOf(Image::SortDescending, 16);
  for (int row = 0; row < 16; ++row) {
    for (int column = 0; column < 16; ++column) {
      EXPECT_EQ(PixelAt(up, 16, column, row), PixelAt(down, 16, column, 15 - row));
    }
  }
}

TEST(PicturesTest, AFullyCoveredPixelHasTheColourItself) {
  EXPECT_EQ(PixelAt(PixelsOf(Image::Delete, 16), 16, 7, 7), 0xFFD0392EU);
}

TEST(PicturesTest, APartlyCoveredPixelHasTheWholeColour) {
  int partly = 0;
  for (const std::uint32_t pixel : PixelsOf(Image::SortAscending, 24)) {
    if (AlphaOf(pixel) < 128) continue;
    partly += AlphaOf(pixel) < 255 ? 1 : 0;
    for (int shift = 0; shift < 24; shift += 8) {
      const auto shown = static_cast<int>((pixel >> shift) & 0xFF);
      const auto meant = static_cast<int>((0x5A6B7BU >> shift) & 0xFF);
      EXPECT_LE(std::abs(shown - meant), 2);
    }
  }
  EXPECT_GT(partly, 0);
}

TEST(PicturesTest, NoShapeEndsBeforeItsEdge) {
  constexpr int kSize = 48;
  const auto pixel = [](Image image, int column, int row) {
    return PixelAt(PixelsOf(image, kSize), kSize, column, row);
  };
  EXPECT_EQ(pixel(Image::SharedContacts, 24, 40), 0xFF2F74C0U) << "the cover of the book";
  EXPECT_EQ(pixel(Image::Contact, 16, 31), 0xFF2F74C0U) << "the shoulders on the card";
  EXPECT_EQ(pixel(Image::RemoteContact, 37, 43), 0xFF2A9D8FU) << "the south of the globe";
  EXPECT_EQ(pixel(Image::Refresh, 26, 19), 0xFF3C9A44U) << "the head of the arrow";
}

TEST(PicturesTest, UprightEdgesAreSharpAtEachSize) {
  for (const int size : kSizes) {
    SCOPED_TRACE(size);
    const auto pixels = PixelsOf(Image::Contact, size);
    int column = 0;
    while (PixelAt(pixels, size, column, size / 2) == 0) ++column;
    EXPECT_EQ(AlphaOf(PixelAt(pixels, size, column, size / 2)), 255U);
  }
}

}  // namespace
}  // namespace ktrv::controls
