#include "controls/CheckBox.h"

#include <utility>

namespace ktrv::controls {

CheckBox::CheckBox(Form& form, Rectangle bounds, String caption)
    : ControlOf(form, bounds), caption_(std::move(caption)) {}

void CheckBox::SetChecked(bool checked) {
  if (checked == checked_) return;
  checked_ = checked;
  if (peer_) peer_->CheckedChanged();
  if (Click) Click();
}

void CheckBox::UserClicks() {
  if (Enabled() && Visible()) SetChecked(!checked_);
}

}  // namespace ktrv::controls
