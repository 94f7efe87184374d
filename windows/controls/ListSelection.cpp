#include "windows/controls/ListSelection.h"

#include <algorithm>
#include <utility>

namespace ktrv::windows {

void ListSelection::SetItemState(int item, UINT state, UINT mask) {
  LVITEMW change{};
  change.state = state;
  change.stateMask = mask;
  list_.Send(LVM_SETITEMSTATE, static_cast<WPARAM>(item), &change);
}

void ListSelection::Show() {
  const auto& wanted = grid_.Selection();
  constexpr int kAll = -1;
  // Otherwise the anchor of Shift selections would be a row of the previous list or a moved row.
  if (grid_.Row() == 0 || focused_ != grid_.Row() || wanted.Ranges() != selected_.Ranges()) {
    list_.Send(LVM_SETSELECTIONMARK, 0, grid_.Row() - 1);
  }
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
  } else {
    SetItemState(kAll, 0, LVIS_FOCUSED);
  }
}

void ListSelection::OnItemChanged(const NMLISTVIEW& change) {
  if (ignoring_ > 0 || !(change.uChanged & LVIF_STATE)) return;
  const UINT difference = change.uNewState ^ change.uOldState;
  if (change.iItem >= 0 && change.uNewState & LVIS_FOCUSED) {
    // uOldState may report a focus that an earlier change has removed.
    focused_ = change.iItem + 1;
  } else if (difference & LVIS_FOCUSED && focused_ == change.iItem + 1) {
    focused_ = 0;
  }
  const int last = change.iItem < 0 ? grid_.Rows() - 1 : change.iItem + 1;
  if (difference & LVIS_SELECTED) {
    Take(std::max(change.iItem + 1, 1), last, change.uNewState & LVIS_SELECTED);
  } else if (difference & LVIS_FOCUSED) {
    grid_.UserSelectsRange(1, 0, true, focused_);
  }
}

void ListSelection::OnRangeChanged(const NMLVODSTATECHANGE& change) {
  if (ignoring_ > 0 || !((change.uNewState ^ change.uOldState) & LVIS_SELECTED)) return;
  range_ = {change.iFrom + 1, change.iTo + 1};
  Take(change.iFrom + 1, change.iTo + 1, change.uNewState & LVIS_SELECTED);
}

bool ListSelection::IsShown(int row, UINT state) const {
  return list_.Send(LVM_GETITEMSTATE, static_cast<WPARAM>(row - 1), static_cast<LPARAM>(state)) !=
         0;
}

bool ListSelection::AreShown(const controls::RowSelection& rows) const {
  if (static_cast<int>(list_.Send(LVM_GETSELECTEDCOUNT)) != rows.Count()) return false;
  // With many rows check only the ends of each range: only whole ranges change without a
  // notification.
  const bool many = rows.Count() > 1000;
  for (const auto& range : rows.Ranges()) {
    const int step = many ? std::max(range.Last - range.First, 1) : 1;
    for (int row = range.First; row <= range.Last; row += step) {
      if (!IsShown(row, LVIS_SELECTED)) return false;
    }
  }
  return true;
}

void ListSelection::Read() {
  if (!list_.Handle() || ignoring_ > 0) return;
  const auto range = std::exchange(range_, {});
  constexpr auto kFromTheFirst = static_cast<WPARAM>(-1);
  if (focused_ > 0 && !IsShown(focused_, LVIS_FOCUSED)) {
    focused_ = static_cast<int>(list_.Send(LVM_GETNEXTITEM, kFromTheFirst, LVNI_FOCUSED)) + 1;
    grid_.UserSelectsRange(1, 0, true, focused_);
  }
  if (AreShown(selected_)) return;
  controls::RowSelection shown;
  shown.Add(range.First, range.Last);
  if (range.First == 0 || !AreShown(shown)) {
    shown.Clear();
    WPARAM item = kFromTheFirst;
    for (LRESULT next = 0; (next = list_.Send(LVM_GETNEXTITEM, item, LVNI_SELECTED)) >= 0;) {
      item = static_cast<WPARAM>(next);
      shown.Add(static_cast<int>(next) + 1, static_cast<int>(next) + 1);
    }
  }
  selected_ = std::move(shown);
  grid_.UserSelects(selected_.Rows(), focused_);
}

void ListSelection::Take(int first, int last, bool selected) {
  if (selected) {
    selected_.Add(first, last);
  } else {
    selected_.Remove(first, last);
  }
  grid_.UserSelectsRange(first, last, selected, focused_);
}

}  // namespace ktrv::windows
