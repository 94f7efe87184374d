#include "windows/controls/LabelWindow.h"

namespace ktrv::windows {

LabelWindow::LabelWindow(FormWindow& form, controls::Label& label)
    : Peer(form, label), label_(label) {
  Create(WC_STATICW, SS_LEFT);
  TextChanged();
}

void LabelWindow::TextChanged() {
  ShowText(label_.Caption());
}

}  // namespace ktrv::windows
