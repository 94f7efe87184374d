#pragma once

#include <cstdint>

#include "controls/Control.h"

namespace ktrv::controls {

class TextBox;

class UpDownPeer : public ControlPeer {};

/// Two small arrows beside a text box, its buddy, that count the number in it up and down.
class UpDown final : public ControlOf<UpDownPeer> {
 public:
  /// \pre min <= max, step > 0
  struct Range {
    std::int32_t Min = 0;
    std::int32_t Max = 100;
    std::int32_t Step = 1;
  };

  /// \param buddy made before, and made by the same form.
  UpDown(Form& form, Rectangle bounds, TextBox& buddy, Range range);

  TextBox& Buddy() const { return buddy_; }
  const Range& Limits() const { return range_; }

  /// The user pressed an arrow: so many steps up, or down when negative. A buddy without a number
  /// counts as 0; the result stays in the range. Nothing happens while either is disabled.
  void UserSteps(std::int32_t steps);

  void Realise(PeerFactory& factory) override;

 private:
  TextBox& buddy_;
  Range range_;
};

}  // namespace ktrv::controls
