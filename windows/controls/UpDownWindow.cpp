#include "windows/controls/UpDownWindow.h"

#include "controls/TextBox.h"

namespace ktrv::windows {

UpDownWindow::UpDownWindow(FormWindow& form, controls::UpDown& control)
    : Peer(form, control), arrows_(control) {
  Create(UPDOWN_CLASSW, UDS_ARROWKEYS);
}

void UpDownWindow::OnFormRealised() {
  // Its own numbers count for nothing; only which way an arrow points.
  Send(UDM_SETRANGE32, 0, 100);
  Send(UDM_SETPOS32, 0, 50);
  auto* buddy = dynamic_cast<ControlWindow*>(arrows_.Buddy().Display());
  if (buddy) Send(UDM_SETBUDDY, reinterpret_cast<WPARAM>(buddy->Handle()));
}

std::optional<LRESULT> UpDownWindow::OnNotify(NMHDR& header) {
  if (header.code != UDN_DELTAPOS) return std::nullopt;
  arrows_.UserSteps(reinterpret_cast<NMUPDOWN&>(header).iDelta > 0 ? 1 : -1);
  return TRUE;  // it stays in the middle of its own range
}

}  // namespace ktrv::windows
