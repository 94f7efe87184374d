#pragma once

#include "controls/CommandButton.h"
#include "windows/controls/ControlWindow.h"

namespace ktrv::windows {

class CommandButtonWindow final : public Peer<controls::CommandButtonPeer> {
 public:
  CommandButtonWindow(FormWindow& form, controls::CommandButton& control);
  void TextChanged() override;
  void OnCommand(WORD code) override;

 private:
  controls::CommandButton& button_;
};

}  // namespace ktrv::windows
