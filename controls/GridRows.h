#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "common/RowSource.h"
#include "common/Text.h"
#include "controls/RowSelection.h"

namespace ktrv::controls {

class Language;

/// A row of texts and its row number in the grid, 1-based.
struct PlacedRow {
  int Row = 0;
  std::vector<String> Cells;
};

/// The data rows of a grid, 0-based, in display order: rows of a recordset, read on demand,
/// followed by rows of the grid itself. In the recordset's order, even a million rows need no
/// memory here.
class GridRows {
 public:
  /// Maps each row to its previous position; empty if no row has moved.
  using FormerRows = std::vector<std::uint32_t>;

  /// Shows the rows of a recordset in its order (null: none).
  void Bind(const RowSource* source);
  /// Appends the rows that the recordset has fetched since the last call.
  void TakeArrived();
  /// Resets to `count` empty rows of the grid.
  void Reset(int count);

  int Count() const;
  /// The recordset's row at this position; -1 for a row of the grid, and whenever a cell was
  /// changed.
  std::int64_t SourceRow(int row) const {
    const Reference reference = At(row);
    return (reference & kOwn) || !changed_.empty() ? -1 : std::int64_t{reference};
  }
  /// Whether the rows of the recordset are in its order, and no cell was changed.
  bool IsNatural() const { return !ordered_ && changed_.empty(); }
  /// \param column column of the grid. \return "" for null and for missing cells
  StringView Text(int row, int column) const;
  void SetText(int row, int column, String text);
  void Append(std::vector<String> cells);
  /// Inserts rows so that they have their row numbers, as far as there are rows before them.
  /// \param rows in ascending order
  void Insert(std::vector<PlacedRow> rows);
  void Remove(int row);
  /// \param rows row numbers of the grid, 1-based
  void Remove(const RowSelection& rows);

  /// \param ascending false: descending. The sort is stable.
  FormerRows Sort(int column, bool ascending, const Language& language);
  /// Restores the order of the recordset, followed by the grid's rows.
  FormerRows Unsort();
  /// Reloads the recordset's rows in its order; discards changed cells and rows of the grid.
  FormerRows Reread();

 private:
  /// A row of the recordset or, with the high bit set, an index in own_.
  using Reference = std::uint32_t;
  static constexpr Reference kOwn = 0x80000000U;

  Reference At(int row) const {
    const auto index = static_cast<Reference>(row);
    if (ordered_) return order_[index];
    return index < taken_ ? index : kOwn | (index - taken_);
  }
  StringView CellOf(Reference reference, int column) const;
  /// Stores the natural order in order_, so that it can be changed.
  void Materialise();

  const RowSource* source_ = nullptr;
  Reference taken_ = 0;
  /// Empty for the natural order: the recordset's rows, then the grid's.
  std::vector<Reference> order_;
  bool ordered_ = false;  ///< whether order_ is used
  std::vector<std::vector<String>> own_;
  std::map<std::pair<Reference, int>, String> changed_;  ///< changed cells of the recordset's rows
};

}  // namespace ktrv::controls
