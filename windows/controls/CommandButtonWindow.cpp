#include "windows/controls/CommandButtonWindow.h"

namespace ktrv::windows {

CommandButtonWindow::CommandButtonWindow(FormWindow& form, controls::CommandButton& control)
    : Peer(form, control), button_(control) {
  Create(WC_BUTTONW, WS_TABSTOP | (control.IsDefault() ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON));
  ShowText(control.Caption());
}

void CommandButtonWindow::OnCommand(WORD code) {
  if (code == BN_CLICKED) button_.UserClicks();
}

}  // namespace ktrv::windows
