#pragma once

#include <variant>
#include <vector>

namespace ktrv::controls {

/// A point on the 16 x 16 grid of a picture; the origin is the upper left corner.
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

/// A rectangle. Its edges are snapped to whole pixels, so that they stay sharp.
struct Box {
  double Left = 0;
  double Top = 0;
  double Right = 0;
  double Bottom = 0;
  double Radius = 0;  ///< of the corners
};

/// A line with round caps.
struct Line {
  Dot From;
  Dot To;
  double Thickness = 1;
};

/// A part of a ring. Angles in degrees, clockwise, 0 is to the right.
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

/// Whether the point is inside the shape.
bool Covers(const Shape& shape, Dot place);

/// The shape with the edges of a box snapped to the pixels of a picture with `size` pixels.
Shape Snapped(const Shape& shape, int size);

}  // namespace ktrv::controls
