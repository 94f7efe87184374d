#include "forms/addressbook/FindBox.h"

#include "controls/Color.h"

namespace ktrv::forms {

void FindBox::Search(bool isLoading) {
  waiting_ = false;
  const bool isEmpty = Trim(box_.Text()).empty();
  if (isEmpty || (HasRows() && Take(grid_.FindFirst(box_.Text(), 1)))) return ShowFound(true);
  if (isLoading) return Wait();
  ShowFound(!HasRows());
}

void FindBox::Wait() {
  ShowFound(true);
  waiting_ = true;
  searched_ = HasRows() ? grid_.Rows() - 1 : 0;
  before_ = grid_.Selection();
}

void FindBox::RowsCame(bool isComplete) {
  if (!waiting_) return;
  if (grid_.HasFocus() || grid_.Selection().Ranges() != before_.Ranges()) {
    waiting_ = false;
    return;
  }
  if (isComplete) return Search(false);
  if (!HasRows()) return;
  if (Take(grid_.FindFirst(box_.Text(), searched_ + 1))) waiting_ = false;
  searched_ = grid_.Rows() - 1;
}

void FindBox::GoOn(bool backward) {
  if (!HasRows() || Trim(box_.Text()).empty()) return;
  const bool found = Take(grid_.FindNext(box_.Text(), grid_.ChosenRow(), backward));
  if (found) waiting_ = false;
  if (!waiting_) ShowFound(found);
}

void FindBox::Forget() {
  waiting_ = false;
  ShowFound(true);
}

bool FindBox::Take(int row) {
  if (row <= 0) return false;
  grid_.SetRow(row);
  grid_.ShowRow(row);
  return true;
}

void FindBox::ShowFound(bool found) {
  box_.SetBackColor(found ? controls::kSystemWindowBackground : controls::kNotFoundBackground);
  if (found) return panel_.ShowSelection();
  panel_.Note(u"Not found: " + String(Trim(box_.Text())));
}

}  // namespace ktrv::forms
