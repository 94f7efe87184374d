#pragma once

#include "controls/Geometry.h"

/// Layout of the contact editor, in twips: two columns of frames of the same total height. Each
/// line of a frame has a label and a box. Boxes have 20 % more space than the default font needs.
namespace ktrv::forms::ContactLayout {

using controls::Rectangle;

inline constexpr int kMargin = 150;
inline constexpr int kFrameWidth = 4650;
inline constexpr int kWidth = 3 * kMargin + 2 * kFrameWidth;
inline constexpr int kGap = 90;  ///< between frames
inline constexpr int kLineHeight = 435;
inline constexpr int kBoxHeight = 345;
inline constexpr int kFirstLine = 315;  ///< from the top of the frame
inline constexpr int kLabelLeft = 165;  ///< from the left of the frame
inline constexpr int kBoxLeft = 1545;
inline constexpr int kBoxWidth = 2940;

constexpr Rectangle FrameOf(int left, int top, int lines) {
  return {left, top, kFrameWidth, kFirstLine + lines * kLineHeight + kGap};
}

constexpr int Below(const Rectangle& frame) {
  return frame.Top + frame.Height + kGap;
}

inline constexpr Rectangle kKind{kMargin, 105, kWidth - 2 * kMargin, 720};
inline constexpr Rectangle kName = FrameOf(kMargin, Below(kKind), 3);
inline constexpr Rectangle kPhones = FrameOf(kMargin, Below(kName), 7);
inline constexpr int kRight = 2 * kMargin + kFrameWidth;
inline constexpr Rectangle kPersonals = FrameOf(kRight, Below(kKind), 4);
inline constexpr Rectangle kAddress = FrameOf(kRight, Below(kPersonals), 6);

constexpr int LineTop(const Rectangle& frame, int line) {
  return frame.Top + kFirstLine + line * kLineHeight;
}

/// \param line 0-based
constexpr Rectangle Label(const Rectangle& frame, int line) {
  constexpr int kDrop = 45;  // aligns the label's baseline with the box
  return {frame.Left + kLabelLeft, LineTop(frame, line) + kDrop, kBoxLeft - kLabelLeft - 30, 285};
}

constexpr Rectangle Box(const Rectangle& frame, int line, int width = kBoxWidth) {
  return {frame.Left + kBoxLeft, LineTop(frame, line), width, kBoxHeight};
}

/// The up-down control to the right of a box of this width.
constexpr Rectangle Arrows(const Rectangle& frame, int line, int boxWidth) {
  return {frame.Left + kBoxLeft + boxWidth, LineTop(frame, line), 255, kBoxHeight};
}

inline constexpr int kButtonWidth = 1320;
inline constexpr int kButtonHeight = 420;
inline constexpr int kButtonsTop = kAddress.Top + kAddress.Height + kMargin;
inline constexpr int kHeight = kButtonsTop + kButtonHeight + kMargin;

/// \param place 0-based, from the right
constexpr Rectangle Button(int place) {
  return {kWidth - kMargin - kButtonWidth - place * (kButtonWidth + 120), kButtonsTop, kButtonWidth,
          kButtonHeight};
}

/// Two lines beside the buttons.
inline constexpr Rectangle kNotice{kMargin, kButtonsTop,
                                   kWidth - 3 * kMargin - 2 * kButtonWidth - 120, 465};

static_assert(kPhones.Top + kPhones.Height == kAddress.Top + kAddress.Height);

}  // namespace ktrv::forms::ContactLayout
