#include "windows/controls/ComboBoxWindow.h"

#include "windows/base/WideText.h"

namespace ktrv::windows {

ComboBoxWindow::ComboBoxWindow(FormWindow& form, controls::ComboBox& control)
    : Peer(form, control), combo_(control) {
  Create(WC_COMBOBOXW, WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST);
  ItemsChanged();
}

int ComboBoxWindow::ExtraHeight() const {
  // A drop-down's height is that of the box with its list dropped down.
  return CurrentScale().Units(220);
}

void ComboBoxWindow::ItemsChanged() {
  int shown = static_cast<int>(Send(CB_GETCOUNT));
  // Items are added one by one; only after a removal they are listed anew.
  if (shown > combo_.ListCount() || shown + 1 < combo_.ListCount()) {
    Send(CB_RESETCONTENT);
    shown = 0;
  }
  for (; shown < combo_.ListCount(); ++shown) {
    Send(CB_ADDSTRING, 0, ToWide(combo_.List(shown)).c_str());
  }
  SelectionChanged();
}

void ComboBoxWindow::SelectionChanged() {
  if (Send(CB_GETCURSEL) != combo_.ListIndex()) {
    Send(CB_SETCURSEL, static_cast<WPARAM>(combo_.ListIndex()));
  }
}

void ComboBoxWindow::OnCommand(WORD code) {
  if (code == CBN_SELCHANGE) combo_.UserChooses(static_cast<int>(Send(CB_GETCURSEL)));
}

}  // namespace ktrv::windows
