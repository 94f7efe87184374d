#include "controls/Shape.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ktrv::controls {

namespace {

bool Inside(const Ellipse& ellipse, Dot place) {
  const double x = (place.X - ellipse.Center.X) / ellipse.RadiusX;
  const double y = (place.Y - ellipse.Center.Y) / ellipse.RadiusY;
  return x * x + y * y <= 1 && place.Y <= ellipse.Floor;
}

bool Inside(const Box& box, Dot place) {
  if (place.X < box.Left || place.X > box.Right || place.Y < box.Top || place.Y > box.Bottom) {
    return false;
  }
  const double x =
      std::max({box.Left + box.Radius - place.X, place.X - box.Right + box.Radius, 0.0});
  const double y =
      std::max({box.Top + box.Radius - place.Y, place.Y - box.Bottom + box.Radius, 0.0});
  return x * x + y * y <= box.Radius * box.Radius;
}

bool Inside(const Line& line, Dot place) {
  const double alongX = line.To.X - line.From.X;
  const double alongY = line.To.Y - line.From.Y;
  const double projection = (place.X - line.From.X) * alongX + (place.Y - line.From.Y) * alongY;
  const double part = std::clamp(projection / (alongX * alongX + alongY * alongY), 0.0, 1.0);
  return std::hypot(place.X - line.From.X - part * alongX, place.Y - line.From.Y - part * alongY) <=
         line.Thickness / 2;
}

bool Inside(const Arc& arc, Dot place) {
  const double x = place.X - arc.Center.X;
  const double y = place.Y - arc.Center.Y;
  if (std::abs(std::hypot(x, y) - arc.Radius) > arc.Thickness / 2) return false;
  const double angle = std::atan2(y, x) * 180 / std::numbers::pi - arc.From;
  return angle - 360 * std::floor(angle / 360) <= arc.Sweep;
}

bool Inside(const Polygon& polygon, Dot place) {
  bool inside = false;
  for (std::size_t i = 0, before = polygon.Corners.size() - 1; i < polygon.Corners.size();
       before = i++) {
    const Dot& a = polygon.Corners[i];
    const Dot& b = polygon.Corners[before];
    const bool crosses = (a.Y > place.Y) != (b.Y > place.Y);
    if (crosses && place.X < (b.X - a.X) * (place.Y - a.Y) / (b.Y - a.Y) + a.X) inside = !inside;
  }
  return inside;
}

}  // namespace

bool Covers(const Shape& shape, Dot place) {
  return std::visit([&](const auto& each) { return Inside(each, place); }, shape);
}

Shape Snapped(const Shape& shape, int size) {
  const auto* box = std::get_if<Box>(&shape);
  if (!box) return shape;
  const auto snap = [size](double units) { return std::round(units * size / 16) * 16 / size; };
  // A thin box keeps at least one pixel.
  const double pixel = 16.0 / size;
  const double left = snap(box->Left);
  const double top = snap(box->Top);
  return Box{left, top, std::max(snap(box->Right), left + pixel),
             std::max(snap(box->Bottom), top + pixel), box->Radius};
}

}  // namespace ktrv::controls
