#pragma once

#include <windows.h>

#include "controls/Geometry.h"
#include "windows/base/Unique.h"

namespace ktrv::windows {

/// Lengths at one resolution and one size of text.
class Scale {
 public:
  /// Height of the text that forms are designed for, in pixels at 96 an inch.
  static constexpr int kUsualText = 12;

  /// \param text the height of the system's own text, in pixels at 96 an inch. Forms grow with
  /// larger text, so that it is not cut; they do not shrink with smaller.
  explicit Scale(int dpi = 96, int text = kUsualText)
      : dpi_(dpi), text_(text > kUsualText ? text : kUsualText) {}
  /// For the system's message font at this resolution.
  static Scale At(int dpi);
  /// The same at the resolution of the monitor that shows the window.
  static Scale Of(HWND window);

  int Dpi() const { return dpi_; }
  /// Pixels of a length in twips, rounded to the nearest.
  int ToPixels(int twips) const { return MulDiv(twips, dpi_ * text_, 1440 * kUsualText); }
  int ToTwips(int pixels) const { return MulDiv(pixels, 1440 * kUsualText, dpi_ * text_); }
  /// Pixels of a length that is `units` pixels at 96 an inch.
  int Units(int units) const { return MulDiv(units, dpi_, 96); }
  /// The edges are scaled, not the lengths, so that neighbours keep touching.
  RECT ToPixels(const controls::Rectangle& bounds) const;
  controls::Rectangle ToTwips(const RECT& bounds) const;
  /// Outer size of a window with this inner size in pixels.
  SIZE Outer(SIZE inner, DWORD style, DWORD exStyle) const;

 private:
  int dpi_;
  int text_;
};

/// The font of the system's own messages at this resolution.
UniqueFont MessageFont(Scale scale);

}  // namespace ktrv::windows
