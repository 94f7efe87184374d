#include "controls/Shape.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>

namespace ktrv::controls {
namespace {

struct Case {
  const char* Name;
  Shape Form;
  Dot Inside;
  Dot Outside;
};

void PrintTo(const Case& example, std::ostream* out) {
  *out << example.Name;
}

class ShapeTest : public testing::TestWithParam<Case> {};

TEST_P(ShapeTest, CoversWhatLiesWithin) {
  EXPECT_TRUE(Covers(GetParam().Form, GetParam().Inside));
  EXPECT_FALSE(Covers(GetParam().Form, GetParam().Outside));
}

const Box kRounded{2, 2, 10, 10, 3};
const Arc kQuarter{{8, 8}, 5, 2, 0, 90};

INSTANTIATE_TEST_SUITE_P(
    Shapes, ShapeTest,
    testing::Values(Case{"EllipseAtItsWidth", Ellipse{{8, 8}, 6, 3}, {13.9, 8}, {8, 11.1}},
                    Case{"EllipseAtItsFloor", Ellipse{{8, 8}, 6, 6, 10}, {8, 9.9}, {8, 10.1}},
                    Case{"BoxAtItsEdge", Box{2, 2, 10, 10}, {2.1, 9.9}, {1.9, 9.9}},
                    Case{"BoxAtItsRoundedCorner", kRounded, {3, 3}, {2.2, 2.2}},
                    Case{"LineAlongIt", Line{{2, 2}, {12, 12}, 2}, {7, 8}, {7, 9}},
                    Case{"LineBehindItsEnd", Line{{2, 8}, {12, 8}, 2}, {12.9, 8}, {13.1, 8}},
                    Case{"ArcInItsRing", kQuarter, {13, 8.1}, {8.1, 8.1}},
                    Case{"ArcBehindItsSweep", kQuarter, {8.1, 13}, {7.9, 13}},
                    Case{"ArcOverTheStart", Arc{{8, 8}, 5, 2, 315, 90}, {13, 7.9}, {8, 3}},
                    Case{"PolygonWithADent",
                         Polygon{{{0, 0}, {8, 6}, {16, 0}, {16, 16}, {0, 16}}},
                         {8, 7},
                         {8, 5}}),
    [](const auto& example) { return std::string(example.param.Name); });

TEST(SnappedShapeTest, ABoxHasItsEdgesOnWholePixels) {
  const auto box = std::get<Box>(Snapped(Box{1, 3, 15, 13, 1.2}, 20));
  constexpr double kPixel = 16.0 / 20;
  EXPECT_DOUBLE_EQ(box.Left, 1 * kPixel);
  EXPECT_DOUBLE_EQ(box.Top, 4 * kPixel);
  EXPECT_DOUBLE_EQ(box.Right, 19 * kPixel);
  EXPECT_DOUBLE_EQ(box.Bottom, 16 * kPixel);
  EXPECT_DOUBLE_EQ(box.Radius, 1.2);
}

TEST(SnappedShapeTest, AThinBoxKeepsOnePixel) {
  const auto box = std::get<Box>(Snapped(Box{2, 4, 14, 4.2}, 16));
  EXPECT_DOUBLE_EQ(box.Bottom - box.Top, 1);
}

TEST(SnappedShapeTest, OtherShapesStayAsTheyAre) {
  const auto line = std::get<Line>(Snapped(Line{{1.3, 2.6}, {3.9, 4.1}, 0.7}, 20));
  EXPECT_DOUBLE_EQ(line.From.X, 1.3);
  EXPECT_DOUBLE_EQ(line.To.Y, 4.1);
}

}  // namespace
}  // namespace ktrv::controls
