#include "windows/controls/Scale.h"

#include <gtest/gtest.h>

namespace ktrv::windows {
namespace {

TEST(TheScale, GrowsWithTheResolution) {
  EXPECT_EQ(Scale(96).ToPixels(1440), 96);
  EXPECT_EQ(Scale(144).ToPixels(1440), 144);
}

TEST(TheScale, GrowsWithLargerText) {
  EXPECT_EQ(Scale(96, 18).ToPixels(1440), 144);
  EXPECT_EQ(Scale(192, 18).ToTwips(288), 1440);
}

TEST(TheScale, LeavesRoomWithSmallerText) {
  EXPECT_EQ(Scale(96, 8).ToPixels(1440), 96);
}

}  // namespace
}  // namespace ktrv::windows
