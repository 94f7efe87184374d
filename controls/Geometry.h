#pragma once

namespace ktrv::controls {

/// A place and size in twips (1440 an inch) inside the container.
struct Rectangle {
  int Left = 0;
  int Top = 0;
  int Width = 0;
  int Height = 0;

  bool operator==(const Rectangle&) const = default;
};

}  // namespace ktrv::controls
