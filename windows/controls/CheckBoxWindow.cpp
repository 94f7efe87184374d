#include "controls/CheckBox.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/WindowFactory.h"

namespace ktrv::windows {

namespace {

class CheckBoxWindow final : public Peer<controls::CheckBoxPeer> {
 public:
  CheckBoxWindow(FormWindow& form, controls::CheckBox& control)
      : Peer(form, control), box_(control) {
    Create(WC_BUTTONW, WS_TABSTOP | BS_AUTOCHECKBOX);
    ShowText(control.Caption());
    CheckedChanged();
  }

  void CheckedChanged() override {
    Send(BM_SETCHECK, box_.Checked() ? BST_CHECKED : BST_UNCHECKED);
  }
  bool ShowsCaption() const override { return true; }
  AccessiblePart Describe() const override {
    return {.Role = ROLE_SYSTEM_CHECKBUTTON, .State = box_.Checked() ? STATE_SYSTEM_CHECKED : 0};
  }
  void OnCommand(WORD code) override {
    const bool checked = Send(BM_GETCHECK) == BST_CHECKED;
    if (code == BN_CLICKED && checked != box_.Checked()) box_.UserClicks();
  }

 private:
  controls::CheckBox& box_;
};

}  // namespace

std::unique_ptr<controls::CheckBoxPeer> WindowFactory::Make(controls::CheckBox& control) {
  return std::make_unique<CheckBoxWindow>(form_, control);
}

}  // namespace ktrv::windows
