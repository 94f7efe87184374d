#pragma once

#include <cstdint>
#include <optional>

#include "common/Text.h"

namespace ktrv {

/// Rows of texts, as a list reads them.
class RowSource {
 public:
  virtual ~RowSource() = default;

  /// Rows that are there. More may follow them.
  virtual std::int64_t RecordCount() const = 0;
  /// 0 until the columns are known.
  virtual std::size_t ColumnCount() const = 0;
  /// nullopt for null. \pre row and column are in range.
  virtual std::optional<StringView> CellText(std::int64_t row, std::size_t column) const = 0;
};

}  // namespace ktrv
