#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "controls/CaseFolding.h"
#include "controls/Control.h"
#include "controls/GridRows.h"
#include "controls/Image.h"
#include "controls/PrefixIndex.h"
#include "controls/RowSelection.h"
#include "database/Recordset.h"

namespace ktrv::controls {

/// One column of a grid.
struct GridColumn {
  enum class Alignment { Left, Center, Right };

  String Key{};
  String Heading{};
  int Width = 1000;  ///< twips
  Alignment Align = Alignment::Left;
  bool Hidden = false;
  Image HeadingPicture = Image::None;
  /// Shows the picture that the column's text stands for instead of the text; screen readers get
  /// the name. Empty: the text is shown.
  std::function<std::pair<Image, String>(StringView text)> Picture{};
};

enum class SortOrder : std::int16_t { None = 0, Ascending = 1, Descending = 2 };

class FlexGridPeer : public ControlPeer {
 public:
  virtual void ColumnsChanged() = 0;
  /// Number, order or contents of the rows changed as a whole.
  virtual void RowsChanged() = 0;
  /// Rows came behind the others.
  virtual void RowsAppended() = 0;
  virtual void HeadingChanged(int column) = 0;
  virtual void SelectionChanged() = 0;
  /// Scrolls so that the row can be seen.
  virtual void RowShown(int row) = 0;
  virtual void RedrawChanged() = 0;
};

/// A grid of rows with a heading row (row 0) and data rows from 1 on. Its rows are its own or those
/// of a recordset that it is bound to, which it reads cell by cell when they are shown and which
/// may still be coming. Columns are meant to be found by key and keep their index when the user
/// moves them; bound, column 0 is a fixed column and column i shows the recordset's column i-1.
class FlexGrid final : public ControlOf<FlexGridPeer> {
 public:
  FlexGrid(Form& form, Rectangle bounds);

  /// The rows were bound or refreshed: the moment to lay out the columns.
  std::function<void()> AfterDataRefresh;
  /// The user sorted by a heading.
  std::function<void(int column, SortOrder order)> AfterSort;
  std::function<void()> DoubleClick;
  std::function<void(std::int16_t keyCode, std::int16_t shift)> KeyDown;
  /// \param row row under the pointer; -1 when there is none.
  std::function<void(MouseButton button, std::int16_t shift, int row)> MouseUp;

  // Rows and columns.
  int Rows() const;  ///< heading included
  int Cols() const { return static_cast<int>(columns_.size()); }
  /// Empties the grid and unbinds it: `rows` rows, heading included, of `cols` unnamed columns.
  void Reset(int rows, int cols);
  /// Shows the recordset's rows (null: none; then as Reset(2, 2)) and reports AfterDataRefresh. The
  /// recordset must live until it is replaced here. While it has no columns yet, because its fetch
  /// has just begun, the grid keeps the columns it has and reports when they come.
  void Bind(const database::Recordset* rows);
  /// The bound recordset has more rows now: they stand behind the others until the next sort.
  void RowsArrived();
  /// Reads the rows anew in the recordset's own order and reports AfterDataRefresh. Selected rows
  /// stay selected.
  void DataRefresh();

  GridColumn& ColumnAt(int column);
  const GridColumn& ColumnAt(int column) const;
  /// After ColumnAt was used to change columns.
  void ColumnsChanged();
  /// Column of the key, regardless of case; -1 when there is none.
  int ColIndex(StringView key) const;
  void SetHeadingPicture(int column, Image picture);

  /// Text of a cell; row 0 gives the heading, a null is "". \throws Error SubscriptOutOfRange
  String Text(int row, int column) const;
  /// Changes a cell, of a bound row too (in the grid only, not in the recordset).
  void SetText(int row, int column, String text);
  /// Appends a row of texts joined with tabs, the first into column 0; more than there are columns
  /// are left out.
  void AddItem(StringView tabSeparated);
  /// The same for texts that may hold tabs.
  void AddRow(std::vector<String> cells);
  void RemoveItem(int row);
  /// Takes the selected rows away, however many, in one pass; no row is current afterwards.
  void RemoveSelected();

  /// Family of the font of headings and rows, in the size of the form's; empty: the form's font.
  /// Set before the form is shown.
  String FontName{};

  /// The column whose text stands in column 0 of the data rows too, for a picture in front of each
  /// row; 0 for none.
  int FixedColumnShows = 0;

  // The user's rights, all on unless switched off.
  bool UserCanSort = true;
  bool UserCanMoveColumns = true;

  // Current row and selection.
  int Row() const { return row_; }
  /// Makes the row the current and only selected one; 0 selects none.
  void SetRow(int row);
  /// The row that a command on one row means: the current one when it is selected, else the only
  /// selected one; 0 for none.
  int ChosenRow() const;
  bool IsSelected(int row) const;
  /// Selected data rows from top to bottom.
  std::vector<int> SelectedRows() const;
  const RowSelection& Selection() const { return selection_; }
  /// Makes these the only selected rows and the first of them the current one.
  void SelectRows(int first, int last);
  void SelectAll();
  void ShowRow(int row);

  /// First row from `startRow` on whose text in the column begins with `text`, case not
  /// significant; -1 when there is none. An empty text matches the first row.
  int FindRow(StringView text, int startRow, int column) const;
  /// Makes FindRow in this column of the bound rows, those to come too, a matter of few
  /// milliseconds in a million rows, for eight bytes a row.
  void SetSearchColumn(int column);
  /// Sorts the rows by the column in the user's language; rows alike keep their order, the current
  /// and the selected rows stay so. None: back to the order in which they came.
  void Sort(int column, SortOrder order);

  /// False keeps the display as it is until it is set true again; calls do not nest.
  void SetRedraw(bool redraw);
  bool Redraw() const { return redraw_; }

  void UserPresses(std::int16_t keyCode, std::int16_t shift);
  void UserDoubleClicks();
  void UserReleases(MouseButton button, std::int16_t shift, int row);
  /// Sorts by the column: ascending, or the other way round when it is sorted ascending already.
  void UserClicksHeading(int column);
  /// The display's selection: `focused` is the current row (0 for none).
  void UserSelects(const std::vector<int>& rows, int focused);
  /// The same for a range of rows of which the display tells only the change.
  void UserSelectsRange(int first, int last, bool selected, int focused);

  void Realise(PeerFactory& factory) override;

 private:
  /// Takes the columns of the recordset when it has them and the grid has not. \return whether it
  /// did
  bool TakeColumns();
  /// No current row, no selection, no sort.
  void Forget();
  /// The current and the selected rows go where the rows went.
  void Reordered(const GridRows::FormerRows& formerRows);
  int Shown(int column) const;
  const CaseFolding& Folding() const;
  /// Takes the rows that came into the search index.
  void IndexRows();
  void CheckRow(int row) const;
  void CheckColumn(int column) const;

  std::vector<GridColumn> columns_;
  GridRows rows_;
  const database::Recordset* source_ = nullptr;
  int row_ = 0;
  RowSelection selection_;
  bool redraw_ = true;
  int sortColumn_ = -1;
  SortOrder sortOrder_ = SortOrder::None;
  bool sortIsCurrent_ = true;  ///< no row came or changed since the last sort
  PrefixIndex searchIndex_;
  mutable std::unique_ptr<CaseFolding> folding_;
};

}  // namespace ktrv::controls
