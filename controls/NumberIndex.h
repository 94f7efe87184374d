#pragma once

#include <cstdint>
#include <vector>

#include "common/RowSource.h"
#include "controls/RowSet.h"

namespace ktrv::controls {

/// The digits of a column's phone numbers, packed into eight bytes per row, so that a million
/// numbers are searched without reading them. May name rows that do not match, but never omits one.
class NumberIndex {
 public:
  /// \param column of the row source
  explicit NumberIndex(std::size_t column) : column_(column) {}

  std::size_t Column() const { return column_; }
  /// Adds rows that the source has got since the last call. \param end the row behind the last one
  void Extend(const RowSource& rows, std::int64_t end);
  std::size_t Rows() const { return numbers_.size(); }
  /// The rows whose digits may contain these.
  RowSet RowsWith(StringView digits) const;

 private:
  std::size_t column_;
  /// Four bits per digit, the last digit lowest, no digit behind them; all ones for a number with
  /// more than sixteen digits.
  std::vector<std::uint64_t> numbers_;
};

}  // namespace ktrv::controls
