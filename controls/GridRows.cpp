#include "controls/GridRows.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace ktrv::controls {

std::optional<StringView> GridRows::Own::CellText(std::int64_t row, std::size_t column) const {
  return Rows[static_cast<std::size_t>(row)].At(column + 1);  // column 0 is the grid's fixed column
}

void GridRows::Bind(const RowSource* source) noexcept {
  Clear();
  source_ = source;
  TakeArrived();
}

void GridRows::Clear() noexcept {
  source_ = nullptr;
  version_ = 0;
  taken_ = 0;
  std::vector<Reference>().swap(order_);
  ordered_ = false;
  own_.Rows.clear();
  changed_.clear();
  edited_.clear();
}

void GridRows::TakeArrived() {
  if (!source_) return;
  ++version_;
  const auto there = static_cast<Reference>(source_->RecordCount());
  if (!own_.Rows.empty()) Materialise();
  if (ordered_) {
    const std::size_t before = order_.size();
    order_.resize(before + (there - taken_));  // all, or none if memory is short
    std::iota(order_.begin() + static_cast<std::ptrdiff_t>(before), order_.end(), taken_);
  }
  taken_ = there;
}

void GridRows::Reset(int count) {
  Clear();
  own_.Rows.resize(static_cast<std::size_t>(count));
}

int GridRows::Count() const {
  return static_cast<int>(ordered_ ? order_.size() : taken_ + own_.Rows.size());
}

StringView GridRows::Text(int row, int column) const {
  return CellOf(At(row), column);
}

void GridRows::SetText(int row, int column, String text) {
  ++version_;
  const Reference reference = At(row);
  edited_.insert(reference);
  if ((reference & kOwn) == 0) {
    changed_[{reference, column}] = std::move(text);
    return;
  }
  own_.Rows[reference & ~kOwn].Set(static_cast<std::size_t>(column), std::move(text));
}

void GridRows::Append(const std::vector<String>& cells) {
  ++version_;
  const auto reference = kOwn | static_cast<Reference>(own_.Rows.size());
  // The row before its place: a row without a place is not shown.
  own_.Rows.emplace_back(cells);
  if (ordered_) order_.push_back(reference);
}

void GridRows::Insert(const std::vector<PlacedRow>& rows) {
  ++version_;
  Materialise();
  std::vector<Reference> order;
  order.reserve(order_.size() + rows.size());
  auto next = order_.cbegin();
  for (const PlacedRow& row : rows) {
    while (order.size() + 1 < static_cast<std::size_t>(row.Row) && next != order_.cend()) {
      order.push_back(*next++);
    }
    order.push_back(kOwn | static_cast<Reference>(own_.Rows.size()));
    own_.Rows.emplace_back(row.Cells);
  }
  order.insert(order.end(), next, order_.cend());
  order_ = std::move(order);
}

void GridRows::Remove(int row) {
  ++version_;
  Materialise();
  const Reference reference = At(row);
  if (reference & kOwn) own_.Rows[reference & ~kOwn] = {};  // indices of own_ are not reused
  order_.erase(order_.begin() + row);
}

void GridRows::Remove(const RowSelection& rows) {
  ++version_;
  Materialise();
  auto range = rows.Ranges().begin();
  std::size_t kept = 0;
  for (std::size_t place = 0; place < order_.size(); ++place) {
    const int row = static_cast<int>(place) + 1;
    while (range != rows.Ranges().end() && range->Last < row) ++range;
    const Reference reference = order_[place];
    if (range == rows.Ranges().end() || row < range->First) {
      order_[kept++] = reference;
    } else if (reference & kOwn) {
      own_.Rows[reference & ~kOwn] = {};  // indices of own_ are not reused
    }
  }
  order_.resize(kept);
}

void GridRows::Arrange(const FormerRows& rows) {
  std::vector<Reference> order(rows.size());
  for (std::size_t row = 0; row < rows.size(); ++row) order[row] = At(static_cast<int>(rows[row]));
  order_ = std::move(order);
  ordered_ = true;
  ++version_;
}

GridRows::FormerRows GridRows::Unsort() {
  if (!ordered_) return {};
  ++version_;
  FormerRows former(order_.size());
  std::iota(former.begin(), former.end(), 0U);
  std::sort(former.begin(), former.end(),
            [&](std::uint32_t left, std::uint32_t right) { return order_[left] < order_[right]; });
  std::sort(order_.begin(), order_.end());
  if (order_.size() == taken_ + own_.Rows.size()) {
    order_ = {};
    ordered_ = false;
  }
  return former;
}

GridRows::FormerRows GridRows::Reread() {
  constexpr std::uint32_t kNowhere = 0xFFFFFFFFU;
  const std::vector<Reference> shown = std::move(order_);
  const bool moved = ordered_;
  Bind(source_);
  if (!moved) return {};
  FormerRows former(taken_, kNowhere);
  for (std::uint32_t row = 0; row < shown.size(); ++row) {
    if (shown[row] < taken_) former[shown[row]] = row;
  }
  return former;
}

StringView GridRows::CellOf(Reference reference, int column) const {
  if (reference & kOwn) {
    return own_.Rows[reference & ~kOwn].At(static_cast<std::size_t>(column));
  }
  if (!changed_.empty()) {
    const auto change = changed_.find({reference, column});
    if (change != changed_.end()) return change->second;
  }
  // Column 0 is the grid's fixed column.
  const auto index = static_cast<std::size_t>(column) - 1;
  if (column == 0 || index >= source_->ColumnCount()) return {};
  return source_->CellText(reference, index).value_or(StringView());
}

void GridRows::Materialise() {
  if (ordered_) return;
  std::vector<Reference> order(static_cast<std::size_t>(Count()));
  for (std::size_t row = 0; row < order.size(); ++row) order[row] = At(static_cast<int>(row));
  order_ = std::move(order);
  ordered_ = true;
}

}  // namespace ktrv::controls
