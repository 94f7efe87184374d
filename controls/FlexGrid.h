#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "common/RowSource.h"
#include "controls/CaseFolding.h"
#include "controls/Control.h"
#include "controls/GridRows.h"
#include "controls/Image.h"
#include "controls/LetterFolding.h"
#include "controls/RowFinder.h"
#include "controls/RowSelection.h"
#include "controls/SlicedWork.h"

namespace ktrv::controls {

/// A column of a grid.
struct GridColumn {
  enum class Alignment { Left, Center, Right };

  String Key{};
  String Heading{};
  int Width = 1000;  ///< twips
  Alignment Align = Alignment::Left;
  bool Hidden = false;
  Image HeadingPicture = Image::None;
  /// Maps a cell text to a picture, shown instead of the text, and to a name for screen readers.
  /// Empty: the text is shown.
  std::function<std::pair<Image, String>(StringView text)> Picture{};
  /// The key of a column whose picture is also shown before the text of this one; empty for none.
  String PictureOf{};
};

enum class SortOrder : std::int16_t { None = 0, Ascending = 1, Descending = 2 };

/// A picture that marks some rows of a grid.
struct RowMark {
  Image Picture = Image::None;
  String Name{};                       ///< for screen readers
  std::function<bool(int row)> Has{};  ///< empty: no row is marked
};

class FlexGridPeer : public ControlPeer {
 public:
  virtual void ColumnsChanged() = 0;
  /// Number, order or contents of the rows have changed.
  virtual void RowsChanged() = 0;
  virtual void RowsAppended() = 0;
  virtual void HeadingChanged(int column) = 0;
  virtual void SelectionChanged() = 0;
  /// Scrolls the row into view.
  virtual void RowShown(int row) = 0;
  virtual void RedrawChanged() = 0;
  /// The first visible row; 0 if the display does not know it.
  virtual int TopRow() const { return 0; }
  /// Scrolls so that the row is the first visible one, as far as there are rows below it.
  virtual void TopRowChanged(int /*row*/) {}
};

/// A grid with a heading row (row 0) and data rows from 1. The rows are its own, or those of a
/// bound recordset, which it reads cell by cell and which may still be fetching. Look up columns by
/// key; their index does not change when the user moves them. If bound, column 0 is a fixed column,
/// and column i shows column i-1 of the recordset.
class FlexGrid final : public ControlOf<FlexGrid, FlexGridPeer> {
 public:
  FlexGrid(Form& form, Rectangle bounds);

  /// Raised after binding or refreshing; the handler should lay out the columns.
  std::function<void()> AfterDataRefresh;
  /// Raised after the user has sorted by clicking a heading.
  std::function<void(int column, SortOrder order)> AfterSort;
  /// Raised after the selection or the current row has changed, whoever changed it.
  std::function<void()> SelectionChange;
  std::function<void()> DoubleClick;
  std::function<void(std::int16_t keyCode, std::int16_t shift)> KeyDown;
  /// \param row the row under the pointer; -1 for none
  std::function<void(MouseButton button, std::int16_t shift, int row)> MouseUp;
  /// The user drags the selected rows. \param x, y twips in the form \return whether they may be
  /// dropped there. Empty: rows cannot be dragged.
  std::function<bool(int x, int y)> DragOver;
  /// The drag has ended. \param dropped whether the user has dropped the rows where the last
  /// DragOver allowed it
  std::function<void(bool dropped)> DragEnd;

  // Rows and columns.
  int Rows() const;  ///< including the heading row
  int Cols() const { return static_cast<int>(columns_.size()); }
  /// Unbinds and clears the grid: `rows` rows, including the heading, of `cols` columns without
  /// names.
  void Reset(int rows, int cols);
  /// Shows the rows of a recordset (null: as Reset(2, 2)) and raises AfterDataRefresh. The
  /// recordset must stay alive until it is replaced. While a fetch has not delivered columns yet,
  /// the grid keeps its present columns; AfterDataRefresh is raised again when they arrive.
  void Bind(const RowSource* rows);
  /// The bound recordset has fetched more rows. They are appended, unsorted until the next sort.
  void RowsArrived();
  /// Reloads the rows in the order of the recordset and raises AfterDataRefresh. The selection
  /// stays on the same rows.
  void DataRefresh();

  GridColumn& ColumnAt(int column);
  const GridColumn& ColumnAt(int column) const;
  /// Call after columns were changed through ColumnAt. Columns that the user has sized get their
  /// width again.
  void ColumnsChanged();
  /// The columns that the display shows before the first ones with names are there.
  std::vector<GridColumn> FirstColumns{};
  /// The index of the column with this key, case-insensitive; -1 if there is none.
  int ColIndex(StringView key) const;
  void SetHeadingPicture(int column, Image picture);

  /// The text of a cell; in row 0 the heading; "" for null. \throws Error SubscriptOutOfRange
  String Text(int row, int column) const;
  /// Changes the text of a cell. For a bound row it changes the grid only, not the recordset.
  void SetText(int row, int column, String text);
  /// Appends a row of tab-separated texts, starting in column 0. Excess texts are ignored.
  void AddItem(StringView tabSeparated);
  /// Appends a row; texts may contain tabs.
  void AddRow(std::vector<String> cells);
  /// Inserts rows so that they have their row numbers, as far as there are rows before them. There
  /// is no current row afterwards. \param rows in ascending order
  void InsertRows(std::vector<PlacedRow> rows);
  void RemoveItem(int row);
  /// Removes these rows in one pass. There is no current row afterwards.
  void RemoveRows(const RowSelection& rows);
  /// Removes all selected rows in one pass. There is no current row afterwards.
  void RemoveSelected();

  /// The font family of headings and rows, in the size of the form's font; empty: the form's font.
  /// Set it before the form is shown.
  String FontName{};

  /// The column whose text is also shown in column 0 of data rows, for a picture in front of each
  /// row; 0 for none.
  int FixedColumnShows = 0;
  /// Which rows are marked in column 0, behind their picture. Call Refresh when that has changed.
  RowMark Mark;

  /// What a tip tells about a cell of a data row; empty: its text if that is cut off.
  std::function<String(int row, int column)> Tip;

  // Permissions of the user.
  bool UserCanSort = true;
  bool UserCanMoveColumns = true;

  // Current row and selection.
  int Row() const { return row_; }
  /// Makes the row current and selects only it; 0: none.
  void SetRow(int row);
  /// The target of a command on one row: the current row if it is selected, otherwise the only
  /// selected row; 0 if there is none.
  int ChosenRow() const;
  bool IsSelected(int row) const;
  /// The selected data rows in ascending order.
  std::vector<int> SelectedRows() const;
  const RowSelection& Selection() const { return selection_; }
  /// Selects exactly these rows and makes the first one current.
  void SelectRows(int first, int last);
  void SelectRows(const RowSelection& rows);
  void SelectAll();
  void ShowRow(int row);
  /// The first visible row; without a display the last one that was set.
  int TopRow() const;
  /// Scrolls so that the row is the first visible one, as far as there are rows below it.
  void SetTopRow(int row);

  /// Finds the first row from `startRow` whose text in the column starts with `text`,
  /// case-insensitive; -1 if there is none. An empty text matches every row.
  int FindRow(StringView text, int startRow, int column) const;
  /// Selects the columns of FindFirst and FindNext and creates their index of all rows, including
  /// those still to come; FindRow on the name column uses it too. A search among a
  /// million rows takes a few milliseconds then. Memory: eight bytes per word and number.
  void SetSearchColumns(const SearchColumns& columns);
  /// The column in which letters typed in the list find a row; 0 for the first visible one.
  int TypingColumn() const { return finder_.Columns().Name; }
  /// The first row from `startRow` that a typed text finds, as RowFinder; -1 if there is none.
  int FindFirst(StringView typed, int startRow) const;
  /// The next row that it finds after `row` (0: none), or the previous one; continues at the other
  /// end. May return the same row. -1 if there is none.
  int FindNext(StringView typed, int row, bool backward) const;
  /// Sorts by the column with the collation of the user's language. Stable; the current row and the
  /// selection stay on the same rows. SortOrder::None restores the original order.
  void Sort(int column, SortOrder order);

  /// As Sort, but many rows are sorted in slices and keep their order until the end. Raises
  /// AfterSort then. Binding or Reset cancels it.
  void SortInSlices(int column, SortOrder order);
  bool IsSorting() const { return sorting_.IsRunning(); }

  /// False suspends painting until it is set to true; calls do not nest.
  void SetRedraw(bool redraw);
  bool Redraw() const { return redraw_; }

  void UserPresses(std::int16_t keyCode, std::int16_t shift);
  void UserDoubleClicks();
  void UserReleases(MouseButton button, std::int16_t shift, int row);
  /// Sorts by the column: descending if its rows are in ascending order or its heading says so,
  /// otherwise ascending. In slices.
  void UserClicksHeading(int column);
  /// \param width twips
  void UserSizesColumn(int column, int width);
  /// Sets the selection made on the display. \param focused the current row; 0 for none
  void UserSelects(const std::vector<int>& rows, int focused);
  /// The same for a range of rows, if the display reports only changes.
  void UserSelectsRange(int first, int last, bool selected, int focused);

 private:
  /// Creates columns for those of the recordset, unless their number is the same. \return whether
  /// it did
  bool TakeColumns();
  /// Resets current row, selection and sort order.
  void Forget();
  /// After rows were inserted or removed at any place: no row is selected.
  void Unselect();
  /// Changes the order, and maps the current row and the selection to the new one. If that fails,
  /// no row is selected: the order may be another. \param change returns the former rows
  void Reorder(const std::function<GridRows::FormerRows()>& change);
  void Reordered(const GridRows::FormerRows& formerRows);
  /// The rows are in the order of this column now.
  void Sorted(int column, SortOrder order);
  int Shown(int column) const;
  const CaseFolding& Folding() const;
  const LetterFolding& SearchFolding() const;
  /// Adds newly fetched rows to the search index.
  void IndexRows();
  /// The same for the grid's own rows, many of them in slices.
  void IndexOwnRows();
  /// The form or a command has changed the selection.
  void ShowSelection();
  void ReportSelection() const;
  void CheckRow(int row) const;
  void CheckColumn(int column) const;

  std::vector<GridColumn> columns_;
  GridRows rows_;
  const RowSource* source_ = nullptr;
  int row_ = 0;
  RowSelection selection_;
  int topRow_ = 0;
  std::map<String, int> userWidths_;  ///< by column key, in twips
  bool redraw_ = true;
  int sortColumn_ = -1;
  SortOrder sortOrder_ = SortOrder::None;
  bool sortIsCurrent_ = true;  ///< no row was added or changed since the last sort
  SlicedWork sorting_;
  // What sorting_ sorts by.
  int soughtColumn_ = 0;
  SortOrder soughtOrder_ = SortOrder::None;
  RowFinder finder_;
  SlicedWork indexing_;
  mutable std::unique_ptr<CaseFolding> folding_;
  mutable std::unique_ptr<LetterFolding> searchFolding_;
};

}  // namespace ktrv::controls
