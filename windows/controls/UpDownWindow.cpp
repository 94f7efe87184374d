#include "controls/TextBox.h"
#include "controls/UpDown.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/WindowFactory.h"

namespace ktrv::windows {

namespace {

class UpDownWindow final : public Peer<controls::UpDownPeer> {
 public:
  UpDownWindow(FormWindow& form, controls::UpDown& control)
      : Peer(form, control), arrows_(control) {
    Create(UPDOWN_CLASSW, UDS_ARROWKEYS);
  }

  void OnFormRealised() override {
    // The control's own position is not used, only the direction of a step.
    Send(UDM_SETRANGE32, 0, 100);
    Send(UDM_SETPOS32, 0, 50);
    auto* buddy = dynamic_cast<ControlWindow*>(arrows_.Buddy().Display());
    if (buddy) Send(UDM_SETBUDDY, reinterpret_cast<WPARAM>(buddy->Handle()));
  }
  AccessiblePart Describe() const override { return {.Role = ROLE_SYSTEM_SPINBUTTON}; }
  std::optional<LRESULT> OnNotify(NMHDR& header) override {
    if (header.code != UDN_DELTAPOS) return std::nullopt;
    arrows_.UserSteps(reinterpret_cast<NMUPDOWN&>(header).iDelta > 0 ? 1 : -1);
    return TRUE;  // keeps its position in the middle of the range
  }

 private:
  controls::UpDown& arrows_;
};

}  // namespace

std::unique_ptr<controls::UpDownPeer> WindowFactory::Make(controls::UpDown& control) {
  return std::make_unique<UpDownWindow>(form_, control);
}

}  // namespace ktrv::windows
