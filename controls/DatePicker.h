#pragma once

#include <functional>
#include <optional>

#include "common/Variant.h"
#include "controls/Control.h"

namespace ktrv::controls {

class DatePickerPeer : public ControlPeer {
 public:
  virtual void ValueChanged() = 0;
};

/// A date in the user's short format, with a check box for no date.
class DatePicker final : public ControlOf<DatePicker, DatePickerPeer> {
 public:
  /// The range of dates that all databases support.
  static constexpr DateTime kEarliest{
      std::chrono::sys_days(std::chrono::year(1753) / 1 / 1).time_since_epoch()};
  static constexpr DateTime kLatest{
      std::chrono::sys_days(std::chrono::year(9999) / 12 / 31).time_since_epoch()};

  DatePicker(Form& form, Rectangle bounds);

  std::function<void()> Change;

  /// nullopt while the check box is cleared.
  const std::optional<DateTime>& Value() const { return value_; }
  /// Raises Change if the value changes. A date out of range becomes nullopt, which is what the
  /// user sees. A caller that must keep such a date has to detect whether the user changed the
  /// value.
  void SetValue(std::optional<DateTime> value);

  /// The user picked a date or cleared the check box. A date out of range is clamped. No effect
  /// while the picker is disabled or invisible.
  void UserPicks(std::optional<DateTime> value);

 private:
  std::optional<DateTime> value_;
};

}  // namespace ktrv::controls
