#pragma once

#include <cstdint>

#include "controls/Control.h"

namespace ktrv::controls {

class TextBox;

class UpDownPeer : public ControlPeer {};

/// An up-down control that increments and decrements the number in its buddy, a text box.
class UpDown final : public ControlOf<UpDown, UpDownPeer> {
 public:
  /// \pre Min <= Max, Step > 0
  struct Range {
    std::int32_t Min = 0;
    std::int32_t Max = 100;
    std::int32_t Step = 1;
  };

  /// \param buddy must be constructed before, by the same form
  UpDown(Form& form, Rectangle bounds, TextBox& buddy, Range range);

  TextBox& Buddy() const { return buddy_; }
  const Range& Limits() const { return range_; }

  /// The user pressed an arrow. \param steps number of steps; negative for down. A buddy without a
  /// number counts as 0; the result is clamped to the range. No effect while either control is
  /// disabled.
  void UserSteps(std::int32_t steps);

 private:
  TextBox& buddy_;
  Range range_;
};

}  // namespace ktrv::controls
