#include "forms/addressbook/SelectionPanel.h"

namespace ktrv::forms {
namespace {

constexpr int kPanel = 2;

}  // namespace

void SelectionPanel::Note(StringView text) {
  // Painting the panel takes longer than a row of a selection.
  if (status_.PanelAt(kPanel).Text != text) status_.SetPanelText(kPanel, String(text));
}

void SelectionPanel::ShowSelection() {
  const int selected = grid_.Selection().Count();
  Note(selected == 0 ? String() : ToDecimal(selected) + u" selected");
}

}  // namespace ktrv::forms
