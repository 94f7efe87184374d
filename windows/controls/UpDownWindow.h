#pragma once

#include "controls/UpDown.h"
#include "windows/controls/ControlWindow.h"

namespace ktrv::windows {

class UpDownWindow final : public Peer<controls::UpDownPeer> {
 public:
  UpDownWindow(FormWindow& form, controls::UpDown& control);
  std::optional<LRESULT> OnNotify(NMHDR& header) override;
  void OnFormRealised() override;

 private:
  controls::UpDown& arrows_;
};

}  // namespace ktrv::windows
