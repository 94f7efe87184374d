#pragma once

#include <cstddef>
#include <vector>

#include "common/Text.h"

namespace ktrv::controls {

/// The texts of the cells of a row, in one block of memory: a list may have a million rows.
class CellTexts {
 public:
  CellTexts() = default;
  explicit CellTexts(const std::vector<String>& cells);

  /// \return "" if there is no such cell
  StringView At(std::size_t cell) const;
  void Set(std::size_t cell, String text);

 private:
  std::size_t Count() const { return block_.empty() ? 0 : block_.front(); }
  /// Where the text of a cell begins; of the one behind the last, where that ends.
  std::size_t Begin(std::size_t cell) const;

  /// The number of cells, where each ends (two units each, the low one first), and their texts.
  std::vector<char16_t> block_;
};

}  // namespace ktrv::controls
