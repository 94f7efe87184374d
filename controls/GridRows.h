#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <vector>

#include "common/RowSource.h"
#include "common/Text.h"
#include "controls/CellTexts.h"
#include "controls/RowSelection.h"

namespace ktrv::controls {

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
  void Bind(const RowSource* source) noexcept;
  /// Appends the rows that the recordset has fetched since the last call.
  void TakeArrived();
  /// Resets to `count` empty rows of the grid.
  void Reset(int count);

  int Count() const;
  /// Another number after each change of rows or texts. Bind and Reset start it anew.
  std::uint64_t Version() const { return version_; }
  /// Where a row comes from.
  struct Origin {
    bool IsOwn = false;    ///< a row of the grid
    std::int64_t Row = 0;  ///< of the recordset or of OwnRows; -1 if a cell was changed
  };
  Origin OriginOf(int row) const {
    const Reference reference = At(row);
    const bool isEdited = !edited_.empty() && edited_.contains(reference);
    return {(reference & kOwn) != 0, isEdited ? -1 : std::int64_t{reference & ~kOwn}};
  }
  /// Whether the rows of the recordset, followed by those of the grid, are in their order, and no
  /// cell was changed.
  bool IsNatural() const { return !ordered_ && edited_.empty(); }
  /// The rows that were appended or inserted, in this order, also those that were removed.
  const RowSource& OwnRows() const { return own_; }
  /// \param column column of the grid. \return "" for null and for missing cells
  StringView Text(int row, int column) const;
  void SetText(int row, int column, String text);
  void Append(const std::vector<String>& cells);
  /// Inserts rows so that they have their row numbers, as far as there are rows before them.
  /// \param rows in ascending order
  void Insert(const std::vector<PlacedRow>& rows);
  void Remove(int row);
  /// \param rows row numbers of the grid, 1-based
  void Remove(const RowSelection& rows);

  /// Puts the rows in this order. \param rows each row once, 0-based
  void Arrange(const FormerRows& rows);
  /// Restores the order of the recordset, followed by the grid's rows.
  FormerRows Unsort();
  /// Reloads the recordset's rows in its order; discards changed cells and rows of the grid.
  FormerRows Reread();

 private:
  /// A row of the recordset or, with the high bit set, an index in own_.
  using Reference = std::uint32_t;
  static constexpr Reference kOwn = 0x80000000U;

  class Own final : public RowSource {
   public:
    std::int64_t RecordCount() const override { return static_cast<std::int64_t>(Rows.size()); }
    std::size_t ColumnCount() const override { return Rows.empty() ? 0 : kMostColumns; }
    std::optional<StringView> CellText(std::int64_t row, std::size_t column) const override;

    std::deque<CellTexts> Rows;  ///< a vector would move all when it grows

   private:
    static constexpr std::size_t kMostColumns = 0xFFFF;
  };

  Reference At(int row) const {
    const auto index = static_cast<Reference>(row);
    if (ordered_) return order_[index];
    return index < taken_ ? index : kOwn | (index - taken_);
  }
  void Clear() noexcept;
  StringView CellOf(Reference reference, int column) const;
  /// Stores the natural order in order_, so that it can be changed.
  void Materialise();

  const RowSource* source_ = nullptr;
  std::uint64_t version_ = 0;
  Reference taken_ = 0;
  /// Empty for the natural order: the recordset's rows, then the grid's.
  std::vector<Reference> order_;
  bool ordered_ = false;  ///< whether order_ is used
  Own own_;
  std::map<std::pair<Reference, int>, String> changed_;  ///< changed cells of the recordset's rows
  std::set<Reference> edited_;                           ///< rows of which a cell was changed
};

}  // namespace ktrv::controls
