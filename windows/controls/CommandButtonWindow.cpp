#include "windows/controls/CommandButtonWindow.h"

namespace ktrv::windows {

CommandButtonWindow::CommandButtonWindow(FormWindow& form, controls::CommandButton& control)
    : Peer(form, control), button_(control) {
  Create(WC_BUTTONW, WS_TABSTOP | (control.IsDefault() ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON));
  TextChanged();
}

void CommandButtonWindow::TextChanged() {
  ShowText(button_.Caption());
}

void CommandButtonWindow::OnCommand(WORD code) {
  if (code == BN_CLICKED) button_.UserClicks();
}

}  // namespace ktrv::windows
