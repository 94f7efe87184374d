#pragma once

#include <variant>
#include <vector>

namespace ktrv::windows {

/// A place on a picture's grid of 16 by 16 units, from its upper left corner.
struct Dot {
  double X = 0;
  double Y = 0;
};

/// The part of an ellipse above the line `Floor`.
struct Ellipse {
  Dot Center;
  double RadiusX = 0;
  double RadiusY = 0;
  double Floor = 16;
};

/// An upright box; its edges are moved onto whole pixels so that they stay sharp.
struct Box {
  double Left = 0;
  double Top = 0;
  double Right = 0;
  double Bottom = 0;
  double Radius = 0;  ///< of the rounded corners
};

/// A line with round ends.
struct Line {
  Dot From;
  Dot To;
  double Thickness = 1;
};

/// A part of a ring, clockwise. Angles in degrees, 0 to the right.
struct Arc {
  Dot Center;
  double Radius = 0;
  double Thickness = 1;
  double From = 0;
  double Sweep = 360;
};

struct Polygon {
  std::vector<Dot> Corners;
};

using Shape = std::variant<Ellipse, Box, Line, Arc, Polygon>;

/// Whether the shape covers the place.
bool Covers(const Shape& shape, Dot place);

/// The shape with the edges that can be sharp on whole pixels of a picture `size` pixels wide.
Shape Snapped(const Shape& shape, int size);

}  // namespace ktrv::windows
