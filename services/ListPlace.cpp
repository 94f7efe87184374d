#include "services/ListPlace.h"

#include <algorithm>

namespace ktrv {
namespace {

constexpr StringView kId = u"ID";
constexpr StringView kType = u"CONTACTTYPE";

// Neighbours that may take the place of the row.
constexpr int kNextRows = 30;
constexpr int kPreviousRows = 10;

}  // namespace

ListPlace::ListPlace(const controls::FlexGrid& grid) : top_(grid.TopRow()) {
  const int chosen = grid.ChosenRow();
  if (chosen == 0) return;
  above_ = chosen - top_;
  Add(grid, chosen);
  // Selected rows may be those that were just deleted.
  int next = chosen + 1;
  for (int count = 0; count < kNextRows && next < grid.Rows(); ++next) {
    if (grid.IsSelected(next)) continue;
    Add(grid, next);
    ++count;
  }
  int previous = chosen - 1;
  for (int count = 0; count < kPreviousRows && previous > 0; --previous) {
    if (grid.IsSelected(previous)) continue;
    Add(grid, previous);
    ++count;
  }
}

void ListPlace::Add(const controls::FlexGrid& grid, int row) {
  const int rank = static_cast<int>(sought_.size());
  sought_.emplace(grid.Text(row, grid.ColIndex(kId)),
                  Sought{grid.Text(row, grid.ColIndex(kType)), rank});
}

void ListPlace::Look(const controls::FlexGrid& grid) {
  const int id = grid.ColIndex(kId);
  const int kind = grid.ColIndex(kType);
  if (sought_.empty() || id < 0 || kind < 0) return;
  for (; looked_ < grid.Rows() - 1 && !HasRow(); ++looked_) {
    const int row = looked_ + 1;
    const auto [first, last] = sought_.equal_range(grid.Text(row, id));
    for (auto each = first; each != last; ++each) {
      const auto& [wantedKind, rank] = each->second;
      if (grid.Text(row, kind) != wantedKind) continue;
      if (found_.Row == 0 || rank < found_.Rank) found_ = {row, rank};
    }
  }
}

void ListPlace::RowsCame(controls::FlexGrid& grid) {
  if (selected_ > 0) return;
  Look(grid);
  if (HasRow()) GoTo(grid);
}

void ListPlace::RowsAreThere(controls::FlexGrid& grid, bool isComplete) {
  Look(grid);
  const bool hasNothing = grid.Selection().Count() == 0;  // there may be a focused row
  if (sought_.empty()) {
    if (hasNothing) Scroll(grid, top_);
  } else if (selected_ > 0) {
    // There may not have been enough rows to scroll so far.
    if (grid.ChosenRow() == selected_) Scroll(grid, selected_ - above_);
  } else if (found_.Row > 0 && (HasRow() || isComplete)) {
    GoTo(grid);
    if (selected_ > 0 && !HasRow()) grid.ShowRow(selected_);
  }
}

void ListPlace::GoTo(controls::FlexGrid& grid) {
  if (grid.Selection().Count() > 0) return;
  selected_ = found_.Row;
  grid.SetRow(selected_);
  Scroll(grid, selected_ - above_);
}

void ListPlace::Scroll(controls::FlexGrid& grid, int top) {
  const int last = grid.Rows() - 1;
  if (top_ == 0 || last < 1 || std::max(grid.TopRow(), 1) != shownTop_) return;
  grid.SetTopRow(std::clamp(top, 1, last));
  shownTop_ = std::max(grid.TopRow(), 1);
}

}  // namespace ktrv
