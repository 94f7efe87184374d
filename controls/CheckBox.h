#pragma once

#include <functional>

#include "controls/Control.h"

namespace ktrv::controls {

class CheckBoxPeer : public ControlPeer {
 public:
  virtual void CheckedChanged() = 0;
};

/// A box that is checked or not, with its caption behind it.
class CheckBox final : public ControlOf<CheckBoxPeer> {
 public:
  CheckBox(Form& form, Rectangle bounds, String caption);

  /// The box became checked or cleared, by its user or by the program.
  std::function<void()> Click;

  const String& Caption() const { return caption_; }
  bool Checked() const { return checked_; }
  /// Reports Click when it differs.
  void SetChecked(bool checked);

  /// The user changed the box; nothing happens while it is disabled or invisible.
  void UserClicks();

  void Realise(PeerFactory& factory) override;

 private:
  String caption_;
  bool checked_ = false;
};

}  // namespace ktrv::controls
