#pragma once

#include <windows.h>

#include "controls/Geometry.h"
#include "windows/base/Unique.h"

namespace ktrv::windows {

/// Converts lengths for a DPI and a text size.
class Scale {
 public:
  /// The text height that forms are designed for, in pixels at 96 DPI.
  static constexpr int kUsualText = 12;

  /// \param text the system's text height, in pixels at 96 DPI. Larger text enlarges the forms, so
  /// that it is not clipped; smaller text does not shrink them.
  explicit Scale(int dpi = 96, int text = kUsualText)
      : dpi_(dpi), text_(text > kUsualText ? text : kUsualText) {}
  /// For the system's message font at this DPI.
  static Scale At(int dpi);
  /// For the system's message font at the DPI of the window's monitor.
  static Scale Of(HWND window);

  int Dpi() const { return dpi_; }
  /// Twips to pixels, rounded to nearest.
  int ToPixels(int twips) const { return MulDiv(twips, dpi_ * text_, 1440 * kUsualText); }
  int ToTwips(int pixels) const { return MulDiv(pixels, 1440 * kUsualText, dpi_ * text_); }
  /// Pixels at 96 DPI to pixels at this DPI.
  int Units(int units) const { return MulDiv(units, dpi_, 96); }
  /// Scales the edges, not the lengths, so that adjacent controls stay adjacent.
  RECT ToPixels(const controls::Rectangle& bounds) const;
  controls::Rectangle ToTwips(const RECT& bounds) const;
  /// The outer size of a window with this inner size, in pixels.
  SIZE Outer(SIZE inner, DWORD style, DWORD exStyle) const;

 private:
  int dpi_;
  int text_;
};

/// The system's message font at this scale's DPI.
UniqueFont MessageFont(Scale scale);

}  // namespace ktrv::windows
