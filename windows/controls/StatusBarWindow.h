#pragma once

#include "controls/StatusBar.h"
#include "windows/controls/ControlWindow.h"

namespace ktrv::windows {

class StatusBarWindow final : public Peer<controls::StatusBarPeer> {
 public:
  StatusBarWindow(FormWindow& form, controls::StatusBar& bar);

  /// The progress bar that lies over a panel and moves with it.
  void SetGuest(HWND progressBar, int panel);

  void BoundsChanged() override {}
  void PanelsChanged() override;
  void PanelTextChanged(int panel) override;
  void OnFormResized() override;

 private:
  void LayOut();

  controls::StatusBar& bar_;
  HWND guest_ = nullptr;
  int guestPanel_ = 0;
};

/// Makes the status bar the progress bar's parent and lays the bar over a panel (1-based; below 1:
/// leaves it where it is).
void PlaceProgressBar(HWND statusBar, HWND progressBar, int panel);

}  // namespace ktrv::windows
