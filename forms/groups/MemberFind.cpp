#include "forms/groups/MemberFind.h"

#include <utility>

#include "controls/Color.h"
#include "controls/Form.h"

namespace ktrv::forms {

void MemberFind::Connect() {
  using controls::KeyCode::Enter;
  using controls::KeyCode::F3;
  using controls::ShiftMask::None;
  using controls::ShiftMask::Shift;
  box_.Change = [this] { Search(); };
  const auto inBox = [this] { return box_.HasFocus(); };
  const auto here = [this] { return box_.HasFocus() || list_.HasFocus(); };
  const auto next = [this] { GoOn(false); };
  const auto previous = [this] { GoOn(true); };
  auto& keys = box_.Parent().Shortcuts;
  keys.push_back({Enter, None, next, inBox, true});
  keys.push_back({Enter, Shift, previous, inBox, true});
  keys.push_back({F3, None, next, here, true});
  keys.push_back({F3, Shift, previous, here, true});
  keys.push_back({controls::KeyCode::Down, None, [this] { ToList(); }, inBox});
  // An empty box leaves the key to the dialog.
  keys.push_back({controls::KeyCode::Escape, None, [this] { box_.SetText({}); },
                  [this] { return box_.HasFocus() && !box_.Text().empty(); }});
}

void MemberFind::Search() {
  if (HasText()) return Show(list_.FindFirst(box_.Text(), 1));
  ShowFound(true);
}

void MemberFind::GoOn(bool backward) {
  if (HasText()) Show(list_.FindNext(box_.Text(), list_.ChosenRow(), backward));
}

void MemberFind::ToList() {
  if (list_.ChosenRow() == 0 && list_.Rows() > 1) list_.SetRow(1);
  list_.SetFocus();
}

void MemberFind::Show(int row) {
  ShowFound(row > 0);
  if (row <= 0) return;
  list_.SetRow(row);
  list_.ShowRow(row);
}

void MemberFind::ShowFound(bool found) {
  box_.SetBackColor(found ? controls::kSystemWindowBackground : controls::kNotFoundBackground);
  if (found && !missing_) return;
  missing_ = !found;
  NotFound(found ? String() : String(Trim(box_.Text())));
}

}  // namespace ktrv::forms
