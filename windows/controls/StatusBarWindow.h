#pragma once

#include "controls/StatusBar.h"
#include "windows/controls/ControlWindow.h"

namespace ktrv::windows {

class StatusBarWindow final : public Peer<controls::StatusBarPeer> {
 public:
  StatusBarWindow(FormWindow& form, controls::StatusBar& bar);

  /// Registers the progress bar over a panel, so that it moves with the panel.
  void SetGuest(HWND progressBar, int panel);

  void BoundsChanged() override {}
  void PanelsChanged() override;
  void PanelTextChanged(int panel) override;
  void OnFormResized() override;
  AccessiblePart Describe() const override { return {.Role = ROLE_SYSTEM_STATUSBAR}; }
  int PartCount() const override { return bar_.PanelCount(); }
  AccessiblePart Part(int number) const override;

 private:
  void LayOut();

  controls::StatusBar& bar_;
  HWND guest_ = nullptr;
  int guestPanel_ = 0;
};

/// Makes the status bar the parent of the progress bar and moves it over a panel (1-based; less
/// than 1: does not move it).
void PlaceProgressBar(HWND statusBar, HWND progressBar, int panel);

}  // namespace ktrv::windows
