#include "controls/CommandButton.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/WindowFactory.h"

namespace ktrv::windows {

namespace {

class CommandButtonWindow final : public Peer<controls::CommandButtonPeer> {
 public:
  CommandButtonWindow(FormWindow& form, controls::CommandButton& control)
      : Peer(form, control), button_(control) {
    Create(WC_BUTTONW, WS_TABSTOP | (control.IsDefault() ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON));
    TextChanged();
  }

  void TextChanged() override { ShowText(button_.Caption()); }
  bool ShowsCaption() const override { return true; }
  AccessiblePart Describe() const override {
    const LONG_PTR style = GetWindowLongPtrW(Handle(), GWL_STYLE);
    const bool isDefault = (style & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
    return {.Role = ROLE_SYSTEM_PUSHBUTTON, .State = isDefault ? STATE_SYSTEM_DEFAULT : 0};
  }
  std::optional<LRESULT> OnMessage(UINT message, WPARAM, LPARAM) override {
    if (message != WM_LBUTTONDOWN && message != WM_LBUTTONDBLCLK) return std::nullopt;
    // A stop button stops at the press: the release may come when the work has ended.
    if (button_.Parent().StopButton() == &button_) {
      button_.UserClicks();
      return 0;
    }
    // The second click on one whose first click has stopped the work must not cancel.
    if (message == WM_LBUTTONDBLCLK && button_.IsCancel()) return 0;
    return std::nullopt;
  }
  void OnCommand(WORD code) override {
    if (code == BN_CLICKED) button_.UserClicks();
  }

 private:
  controls::CommandButton& button_;
};

}  // namespace

std::unique_ptr<controls::CommandButtonPeer> WindowFactory::Make(controls::CommandButton& control) {
  return std::make_unique<CommandButtonWindow>(form_, control);
}

}  // namespace ktrv::windows
