#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <utility>
#include <vector>

#include "common/Variant.h"

namespace ktrv::database {

/// Values by column index, in the order in which they were first set. Statements list columns in
/// this order.
class ColumnValues {
 public:
  using Entries = std::vector<std::pair<std::size_t, Variant>>;

  ColumnValues() = default;
  ColumnValues(std::initializer_list<Entries::value_type> entries) : entries_(entries) {}

  Entries::const_iterator begin() const { return entries_.begin(); }
  Entries::const_iterator end() const { return entries_.end(); }
  bool empty() const { return entries_.empty(); }
  void clear() { entries_.clear(); }

  Entries::const_iterator find(std::size_t column) const {
    return std::find_if(entries_.begin(), entries_.end(),
                        [&](const auto& entry) { return entry.first == column; });
  }
  /// The column's value; inserts null if it has none.
  Variant& operator[](std::size_t column) {
    const auto entry = entries_.begin() + (find(column) - entries_.cbegin());
    return entry != entries_.end() ? entry->second : entries_.emplace_back(column, Null{}).second;
  }

 private:
  Entries entries_;
};

}  // namespace ktrv::database
