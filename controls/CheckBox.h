#pragma once

#include <functional>
#include <utility>

#include "controls/Control.h"

namespace ktrv::controls {

class CheckBoxPeer : public ControlPeer {
 public:
  virtual void CheckedChanged() = 0;
};

/// A check box with a caption.
class CheckBox final : public ControlOf<CheckBox, CheckBoxPeer> {
 public:
  CheckBox(Form& form, Rectangle bounds, String caption)
      : ControlOf(form, bounds), caption_(std::move(caption)) {}

  /// Raised when the state has changed, by the user or by the program.
  std::function<void()> Click;

  const String& Caption() const { return caption_; }
  bool Checked() const { return checked_; }
  /// Raises Click if the state changes.
  void SetChecked(bool checked) {
    if (checked == checked_) return;
    checked_ = checked;
    if (peer_) peer_->CheckedChanged();
    if (Click) Click();
  }

  /// The user clicked the box. No effect while it is disabled or invisible.
  void UserClicks() {
    if (Enabled() && Visible()) SetChecked(!checked_);
  }

 private:
  String caption_;
  bool checked_ = false;
};

}  // namespace ktrv::controls
