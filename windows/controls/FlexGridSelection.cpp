// The selection of FlexGridWindow, told both ways.
#include <algorithm>

#include "windows/controls/FlexGridWindow.h"
#include "windows/controls/Nesting.h"

namespace ktrv::windows {

void FlexGridWindow::SelectionChanged() {
  if (!Handle()) return;
  if (appended_) ShowAppended();
  const Nesting changing(changing_);
  // One row after another would be painted otherwise.
  const bool many = selected_.Count() > 100 || grid_.Selection().Count() > 100;
  if (!many) return ShowSelection();
  const RedrawOff off(*this);
  ShowSelection();
}

void FlexGridWindow::SetItemState(int item, UINT state, UINT mask) {
  LVITEMW change{};
  change.state = state;
  change.stateMask = mask;
  Send(LVM_SETITEMSTATE, static_cast<WPARAM>(item), &change);
}

void FlexGridWindow::ShowSelection() {
  const auto& wanted = grid_.Selection();
  constexpr int kAll = -1;
  if (wanted.Ranges() != selected_.Ranges()) {
    if (selected_.Count() > 1000) {
      SetItemState(kAll, 0, LVIS_SELECTED);
    } else {
      for (const int row : selected_.Rows()) SetItemState(row - 1, 0, LVIS_SELECTED);
    }
    if (wanted.Count() > 0 && wanted.Count() == grid_.Rows() - 1) {
      SetItemState(kAll, LVIS_SELECTED, LVIS_SELECTED);
    } else {
      for (const int row : wanted.Rows()) SetItemState(row - 1, LVIS_SELECTED, LVIS_SELECTED);
    }
    selected_ = wanted;
  }
  if (focused_ == grid_.Row()) return;
  focused_ = grid_.Row();
  if (focused_ > 0) {
    SetItemState(focused_ - 1, LVIS_FOCUSED, LVIS_FOCUSED);
    Send(LVM_SETSELECTIONMARK, 0, focused_ - 1);
  } else {
    SetItemState(kAll, 0, LVIS_FOCUSED);
  }
}

void FlexGridWindow::OnItemChanged(const NMLISTVIEW& change) {
  if (changing_ > 0 || !(change.uChanged & LVIF_STATE)) return;
  const UINT difference = change.uNewState ^ change.uOldState;
  if (change.iItem >= 0 && change.uNewState & LVIS_FOCUSED) {
    // The old state may tell of a focus that an earlier change took.
    focused_ = change.iItem + 1;
  } else if (difference & LVIS_FOCUSED && focused_ == change.iItem + 1) {
    focused_ = 0;
  }
  const int last = change.iItem < 0 ? grid_.Rows() - 1 : change.iItem + 1;
  if (difference & LVIS_SELECTED) {
    TakeSelection(std::max(change.iItem + 1, 1), last, change.uNewState & LVIS_SELECTED);
  } else if (difference & LVIS_FOCUSED) {
    grid_.UserSelectsRange(1, 0, true, focused_);
  }
}

void FlexGridWindow::OnRangeChanged(const NMLVODSTATECHANGE& change) {
  if (changing_ > 0 || !((change.uNewState ^ change.uOldState) & LVIS_SELECTED)) return;
  TakeSelection(change.iFrom + 1, change.iTo + 1, change.uNewState & LVIS_SELECTED);
}

void FlexGridWindow::TakeSelection(int first, int last, bool selected) {
  if (selected) {
    selected_.Add(first, last);
  } else {
    selected_.Remove(first, last);
  }
  grid_.UserSelectsRange(first, last, selected, focused_);
}

}  // namespace ktrv::windows
