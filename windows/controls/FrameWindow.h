#pragma once

#include "controls/Frame.h"
#include "windows/controls/ControlWindow.h"

namespace ktrv::windows {

class FrameWindow final : public Peer<controls::FramePeer> {
 public:
  FrameWindow(FormWindow& form, controls::Frame& control);

  void OnFormRealised() override;

 protected:
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
};

}  // namespace ktrv::windows
