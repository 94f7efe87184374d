#pragma once

#include "controls/CheckBox.h"
#include "windows/controls/ControlWindow.h"

namespace ktrv::windows {

class CheckBoxWindow final : public Peer<controls::CheckBoxPeer> {
 public:
  CheckBoxWindow(FormWindow& form, controls::CheckBox& control);
  void CheckedChanged() override;
  void OnCommand(WORD code) override;

 private:
  controls::CheckBox& box_;
};

}  // namespace ktrv::windows
