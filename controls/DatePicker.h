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

/// A date in the user's short form, with a check box in front that says whether there is one.
class DatePicker final : public ControlOf<DatePickerPeer> {
 public:
  /// The days that every database can hold; the user can pick no other.
  static constexpr DateTime kEarliest{
      std::chrono::sys_days(std::chrono::year(1753) / 1 / 1).time_since_epoch()};
  static constexpr DateTime kLatest{
      std::chrono::sys_days(std::chrono::year(9999) / 12 / 31).time_since_epoch()};

  DatePicker(Form& form, Rectangle bounds);

  std::function<void()> Change;

  /// Nothing while the check box is cleared.
  const std::optional<DateTime>& Value() const { return value_; }
  /// Reports Change when it differs. A date outside the days above counts as none, which is what
  /// the user sees; whoever set it keeps it by looking for changes.
  void SetValue(std::optional<DateTime> value);

  /// The user picked a date, or cleared the check box. A date outside the days above becomes the
  /// nearest of them. Nothing happens while the picker is disabled or invisible.
  void UserPicks(std::optional<DateTime> value);

  void Realise(PeerFactory& factory) override;

 private:
  std::optional<DateTime> value_;
};

}  // namespace ktrv::controls
