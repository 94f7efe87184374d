#include "controls/RowSelection.h"

#include <algorithm>

namespace ktrv::controls {

bool RowSelection::Contains(int row) const {
  const auto next =
      std::upper_bound(ranges_.begin(), ranges_.end(), row,
                       [](int value, const Range& range) { return value < range.First; });
  return next != ranges_.begin() && row <= std::prev(next)->Last;
}

int RowSelection::Count() const {
  int count = 0;
  for (const Range& range : ranges_) count += range.Last - range.First + 1;
  return count;
}

std::vector<int> RowSelection::Rows() const {
  std::vector<int> rows;
  rows.reserve(static_cast<std::size_t>(Count()));
  for (const Range& range : ranges_) {
    for (int row = range.First; row <= range.Last; ++row) rows.push_back(row);
  }
  return rows;
}

void RowSelection::Add(int first, int last) {
  if (first > last) return;
  // Merge with ranges that overlap or are adjacent.
  const auto begin = std::lower_bound(ranges_.begin(), ranges_.end(), first - 1,
                                      [](const Range& range, int row) { return range.Last < row; });
  auto end = begin;
  for (; end != ranges_.end() && end->First <= last + 1; ++end) {
    first = std::min(first, end->First);
    last = std::max(last, end->Last);
  }
  ranges_.insert(ranges_.erase(begin, end), {first, last});
}

void RowSelection::Remove(int first, int last) {
  if (first > last) return;
  const auto begin = std::lower_bound(ranges_.begin(), ranges_.end(), first,
                                      [](const Range& range, int row) { return range.Last < row; });
  std::vector<Range> remains;
  auto end = begin;
  for (; end != ranges_.end() && end->First <= last; ++end) {
    if (end->First < first) remains.push_back({end->First, first - 1});
    if (end->Last > last) remains.push_back({last + 1, end->Last});
  }
  ranges_.insert(ranges_.erase(begin, end), remains.begin(), remains.end());
}

void RowSelection::RowGone(int row) {
  Remove(row, row);
  RowSelection moved;
  for (const Range& range : ranges_) {
    const int shift = range.First > row ? 1 : 0;
    moved.Add(range.First - shift, range.Last - shift);
  }
  ranges_ = std::move(moved.ranges_);
}

}  // namespace ktrv::controls
