#include "controls/RowSort.h"

#include <algorithm>

namespace ktrv::controls {

RowSort::RowSort(GridRows& rows, const Language& language, int column, bool ascending)
    : rows_(rows), language_(language), column_(column), ascending_(ascending) {}

bool RowSort::GoOn() {
  const auto count = static_cast<std::size_t>(rows_.Count());
  if (!keys_ || version_ != rows_.Version()) {
    version_ = rows_.Version();
    keys_.emplace(language_, count, ascending_);
  }
  if (keys_->Count() == count) return keys_->SortOn();
  AddKeys();
  return true;
}

void RowSort::AddKeys() {
  constexpr int kAtOnce = 2000;
  const int first = static_cast<int>(keys_->Count());
  const int end = std::min(first + kAtOnce, rows_.Count());
  for (int row = first; row < end; ++row) keys_->Add(rows_.Text(row, column_));
}

GridRows::FormerRows RowSort::Finish() {
  GridRows::FormerRows former = keys_->Order();
  rows_.Arrange(former);
  return former;
}

}  // namespace ktrv::controls
