#pragma once

#include "controls/Label.h"
#include "windows/controls/ControlWindow.h"

namespace ktrv::windows {

class LabelWindow final : public Peer<controls::LabelPeer> {
 public:
  LabelWindow(FormWindow& form, controls::Label& label);
  void TextChanged() override;

 private:
  controls::Label& label_;
};

}  // namespace ktrv::windows
