#pragma once

namespace ktrv::controls {

/// Position and size in twips (1/1440 inch), relative to the container.
struct Rectangle {
  int Left = 0;
  int Top = 0;
  int Width = 0;
  int Height = 0;

  bool operator==(const Rectangle&) const = default;
};

}  // namespace ktrv::controls
