#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "common/Text.h"
#include "database/Recordset.h"

namespace ktrv::controls {

class Language;

/// The data rows of a grid, counted from 0, in the order in which they are shown: rows of a
/// recordset, read where they are, with rows of the grid's own behind them.
class GridRows {
 public:
  /// Rows of the recordset (null: none), in its order.
  void Bind(const database::Recordset* source);
  /// Takes in the rows that the recordset has now and had not before, behind the others.
  void TakeArrived();
  /// `count` empty rows of the grid's own and nothing else.
  void Reset(int count);

  int Count() const { return static_cast<int>(order_.size()); }
  /// \param column grid column. An empty text for null and beyond what the row holds.
  StringView Text(int row, int column) const;
  void SetText(int row, int column, String text);
  void Append(std::vector<String> cells);
  void Remove(int row);

  /// \param ascending else descending; stable.
  void Sort(int column, bool ascending, const Language& language);

 private:
  /// A row is a recordset's row, or with the high bit set an index into own_.
  using Reference = std::uint32_t;
  static constexpr Reference kOwn = 0x80000000U;

  StringView CellOf(Reference reference, int column) const;

  const database::Recordset* source_ = nullptr;
  Reference taken_ = 0;
  std::vector<Reference> order_;
  std::vector<std::vector<String>> own_;
  std::map<std::pair<Reference, int>, String>
      changed_;  ///< cells of the recordset's rows changed here
};

}  // namespace ktrv::controls
