#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "common/Text.h"
#include "controls/RowSelection.h"
#include "database/Recordset.h"

namespace ktrv::controls {

class Language;

/// The data rows of a grid, counted from 0, in the order in which they are shown: rows of a
/// recordset, read where they are, with rows of the grid's own behind them. A million rows in the
/// recordset's order cost nothing here.
class GridRows {
 public:
  /// For each row the place where it stood before; empty when no row moved.
  using FormerRows = std::vector<std::uint32_t>;

  /// The recordset's rows (null: none), in its order.
  void Bind(const database::Recordset* source);
  /// Takes in the rows that the recordset has now and had not before, behind the others.
  void TakeArrived();
  /// `count` empty rows of the grid's own and nothing else.
  void Reset(int count);

  int Count() const;
  /// The row of the recordset that stands here as it came; -1 when the row is the grid's own or
  /// cells were changed here.
  std::int64_t SourceRow(int row) const {
    const Reference reference = At(row);
    return (reference & kOwn) || !changed_.empty() ? -1 : std::int64_t{reference};
  }
  /// \param column grid column. An empty text for null and beyond what the row holds.
  StringView Text(int row, int column) const;
  void SetText(int row, int column, String text);
  void Append(std::vector<String> cells);
  void Remove(int row);
  /// \param rows grid rows, that is, counted from 1.
  void Remove(const RowSelection& rows);

  /// \param ascending else descending; stable.
  FormerRows Sort(int column, bool ascending, const Language& language);
  /// Back to the recordset's order, the grid's own rows behind.
  FormerRows Unsort();
  /// The recordset's rows as they are now, in its order, without the changes and rows made here.
  FormerRows Reread();

 private:
  /// A row is a recordset's row, or with the high bit set an index into own_.
  using Reference = std::uint32_t;
  static constexpr Reference kOwn = 0x80000000U;

  Reference At(int row) const {
    const auto index = static_cast<Reference>(row);
    if (ordered_) return order_[index];
    return index < taken_ ? index : kOwn | (index - taken_);
  }
  StringView CellOf(Reference reference, int column) const;
  /// Writes the natural order out, so that rows can leave it.
  void Materialise();

  const database::Recordset* source_ = nullptr;
  Reference taken_ = 0;
  /// Empty while the rows stand in their natural order: the recordset's, then the grid's own.
  std::vector<Reference> order_;
  bool ordered_ = false;  ///< order_ holds the order
  std::vector<std::vector<String>> own_;
  std::map<std::pair<Reference, int>, String>
      changed_;  ///< cells of the recordset's rows changed here
};

}  // namespace ktrv::controls
