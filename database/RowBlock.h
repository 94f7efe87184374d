#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "common/Text.h"

namespace ktrv::database {

/// A block of rows in compact form: the text of all cells in one UTF-16 buffer, with the cell
/// lengths before each row. Filled by one thread, then immutable and readable by any thread. The
/// meaning of a text (number, date) depends on its column.
class RowBlock {
 public:
  /// \param columns cells per row. \param rows number of rows to reserve memory for
  explicit RowBlock(std::size_t columns, std::size_t rows = 0);

  /// Starts a row. Exactly one Add or AddNull per column must follow.
  void BeginRow();
  void Add(StringView text);
  /// The same for a text of ASCII characters.
  void AddAscii(std::string_view text);
  void AddNull();

  /// Releases unused memory.
  void Finish();

  std::size_t Rows() const { return starts_.size(); }
  std::size_t Columns() const { return columns_; }

  /// The text of a cell; nullopt for null. Valid for the lifetime of the block. \pre row < Rows(),
  /// column < Columns()
  std::optional<StringView> Cell(std::size_t row, std::size_t column) const;

  /// All cells of a row: faster than Cell for each of them. \param cells Columns() places
  void ReadRow(std::size_t row, std::span<std::optional<StringView>> cells) const;

 private:
  void AddLength(std::size_t length);

  std::size_t columns_;
  std::size_t filled_ = 0;
  std::vector<std::uint32_t> starts_;
  std::vector<char16_t> units_;
};

}  // namespace ktrv::database
