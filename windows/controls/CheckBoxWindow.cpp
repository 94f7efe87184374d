#include "windows/controls/CheckBoxWindow.h"

#include "windows/base/WideText.h"

namespace ktrv::windows {

CheckBoxWindow::CheckBoxWindow(FormWindow& form, controls::CheckBox& control)
    : Peer(form, control), box_(control) {
  Create(WC_BUTTONW, WS_TABSTOP | BS_AUTOCHECKBOX);
  ShowText(control.Caption());
  CheckedChanged();
}

void CheckBoxWindow::CheckedChanged() {
  Send(BM_SETCHECK, box_.Checked() ? BST_CHECKED : BST_UNCHECKED);
}

void CheckBoxWindow::OnCommand(WORD code) {
  const bool checked = Send(BM_GETCHECK) == BST_CHECKED;
  if (code == BN_CLICKED && checked != box_.Checked()) box_.UserClicks();
}

}  // namespace ktrv::windows
