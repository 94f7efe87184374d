#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "common/Text.h"

namespace ktrv::database {

/// Some rows of a result, packed: all cells are texts in one run of UTF-16 units, each row led by
/// its cells' lengths. Filled by one thread and unchanged once it is handed on, so any thread may
/// read it. What a text means (number, date) is the column's business.
class RowBlock {
 public:
  /// \param columns number of cells in a row. \param rows how many rows to make room for.
  explicit RowBlock(std::size_t columns, std::size_t rows = 0);

  /// Starts a row; one Add or AddNull for each column must follow.
  void BeginRow();
  void Add(StringView text);
  void AddNull();

  /// Gives back memory that was reserved and not used.
  void Finish();

  std::size_t Rows() const { return starts_.size(); }
  std::size_t Columns() const { return columns_; }

  /// The text of a cell, valid while the block lives; nothing when it is null.
  /// \pre row < Rows(), column < Columns().
  std::optional<StringView> Cell(std::size_t row, std::size_t column) const;

 private:
  std::size_t columns_;
  std::size_t filled_ = 0;
  std::vector<std::uint32_t> starts_;
  std::vector<char16_t> units_;
};

}  // namespace ktrv::database
