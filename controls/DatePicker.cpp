#include "controls/DatePicker.h"

#include <algorithm>

namespace ktrv::controls {

DatePicker::DatePicker(Form& form, Rectangle bounds) : ControlOf(form, bounds) {}

void DatePicker::SetValue(std::optional<DateTime> value) {
  using std::chrono::days;
  if (value && (*value < kEarliest || std::chrono::floor<days>(*value) > kLatest)) value.reset();
  if (value == value_) return;
  value_ = value;
  if (peer_) peer_->ValueChanged();
  if (Change) Change();
}

void DatePicker::UserPicks(std::optional<DateTime> value) {
  if (!Enabled() || !Visible()) return;
  if (value) value = std::clamp(*value, kEarliest, kLatest);
  SetValue(value);
}

}  // namespace ktrv::controls
