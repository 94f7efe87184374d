#pragma once

#include "controls/ProgressBar.h"
#include "windows/controls/ControlWindow.h"

namespace ktrv::windows {

class ProgressBarWindow final : public Peer<controls::ProgressBarPeer> {
 public:
  ProgressBarWindow(FormWindow& form, controls::ProgressBar& bar);
  void ValueChanged() override;
  void PlacedIn(controls::StatusBar& statusBar, int panel) override;

 private:
  controls::ProgressBar& bar_;
  ULONGLONG shownAt_ = 0;  ///< milliseconds since the system started
};

}  // namespace ktrv::windows
