#include "controls/FlexGrid.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <utility>

#include "common/Error.h"
#include "controls/Form.h"
#include "controls/RowSort.h"

namespace ktrv::controls {

FlexGrid::FlexGrid(Form& form, Rectangle bounds) : ControlOf(form, bounds) {
  Reset(2, 2);
}

int FlexGrid::Rows() const {
  return rows_.Count() + 1;
}

void FlexGrid::Reset(int rows, int cols) {
  source_ = nullptr;
  finder_.Stop();
  rows_.Reset(rows - 1);
  columns_.assign(static_cast<std::size_t>(cols), {});
  Forget();
  if (peer_) {
    peer_->ColumnsChanged();
    peer_->RowsChanged();
  }
  ReportSelection();
}

void FlexGrid::Bind(const RowSource* rows) {
  if (!rows) {
    Reset(2, 2);
  } else {
    source_ = rows;
    finder_.Stop();
    rows_.Bind(rows);
    Forget();
    TakeColumns();
    if (peer_) peer_->RowsChanged();
    ReportSelection();
  }
  if (AfterDataRefresh) AfterDataRefresh();
}

void FlexGrid::RowsArrived() {
  if (!source_) return;
  rows_.TakeArrived();
  IndexRows();
  sortIsCurrent_ = false;
  if (TakeColumns() && AfterDataRefresh) AfterDataRefresh();
  if (peer_) peer_->RowsAppended();
}

void FlexGrid::DataRefresh() {
  sorting_.Stop();
  Reorder([this] { return rows_.Reread(); });
  finder_.ForgetOwn();
  IndexRows();
  sortColumn_ = -1;
  sortOrder_ = SortOrder::None;
  TakeColumns();
  if (peer_) peer_->RowsChanged();
  ReportSelection();
  if (AfterDataRefresh) AfterDataRefresh();
}

bool FlexGrid::TakeColumns() {
  if (!source_ || source_->ColumnCount() == 0) return false;
  const std::size_t wanted = source_->ColumnCount() + 1;
  if (columns_.size() == wanted) return false;
  columns_.assign(wanted, {});
  if (peer_) peer_->ColumnsChanged();
  return true;
}

void FlexGrid::Forget() {
  sorting_.Stop();
  indexing_.Stop();
  row_ = 0;
  topRow_ = 0;
  selection_.Clear();
  sortColumn_ = -1;
  sortOrder_ = SortOrder::None;
}

GridColumn& FlexGrid::ColumnAt(int column) {
  CheckColumn(column);
  return columns_[static_cast<std::size_t>(column)];
}

const GridColumn& FlexGrid::ColumnAt(int column) const {
  CheckColumn(column);
  return columns_[static_cast<std::size_t>(column)];
}

void FlexGrid::ColumnsChanged() {
  for (GridColumn& column : columns_) {
    const auto sized = userWidths_.find(column.Key);
    if (sized != userWidths_.end()) column.Width = sized->second;
  }
  if (peer_) peer_->ColumnsChanged();
}

int FlexGrid::ColIndex(StringView key) const {
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    if (EqualsIgnoringCase(columns_[column].Key, key)) return static_cast<int>(column);
  }
  return -1;
}

void FlexGrid::SetHeadingPicture(int column, Image picture) {
  ColumnAt(column).HeadingPicture = picture;
  if (peer_) peer_->HeadingChanged(column);
}

String FlexGrid::Text(int row, int column) const {
  CheckRow(row);
  CheckColumn(column);
  if (row == 0) return columns_[static_cast<std::size_t>(column)].Heading;
  return String(rows_.Text(row - 1, Shown(column)));
}

void FlexGrid::SetText(int row, int column, String text) {
  CheckRow(row);
  if (row == 0) {
    ColumnAt(column).Heading = std::move(text);
    if (peer_) peer_->HeadingChanged(column);
    return;
  }
  CheckColumn(column);
  rows_.SetText(row - 1, column, std::move(text));
  sortIsCurrent_ = false;
  if (peer_) peer_->RowsChanged();
}

void FlexGrid::AddItem(StringView tabSeparated) {
  std::vector<String> cells;
  while (cells.size() < columns_.size()) {
    const std::size_t tab = tabSeparated.find(u'\t');
    cells.emplace_back(tabSeparated.substr(0, tab));
    if (tab == StringView::npos) break;
    tabSeparated.remove_prefix(tab + 1);
  }
  AddRow(std::move(cells));
}

void FlexGrid::AddRow(std::vector<String> cells) {
  if (cells.size() > columns_.size()) cells.resize(columns_.size());
  rows_.Append(cells);
  IndexOwnRows();
  sortIsCurrent_ = false;
  if (peer_) peer_->RowsAppended();
}

void FlexGrid::InsertRows(std::vector<PlacedRow> rows) {
  for (PlacedRow& row : rows) {
    if (row.Cells.size() > columns_.size()) row.Cells.resize(columns_.size());
  }
  rows_.Insert(rows);
  IndexOwnRows();
  sortIsCurrent_ = false;
  Unselect();
}

void FlexGrid::RemoveItem(int row) {
  CheckRow(row);
  if (row == 0) throw Error(ErrorNumber::SubscriptOutOfRange);
  rows_.Remove(row - 1);
  selection_.RowGone(row);
  if (row_ == row) {
    row_ = 0;
  } else if (row_ > row) {
    --row_;
  }
  if (peer_) peer_->RowsChanged();
  ReportSelection();
}

void FlexGrid::RemoveRows(const RowSelection& rows) {
  rows_.Remove(rows);
  Unselect();
}

void FlexGrid::RemoveSelected() {
  RemoveRows(selection_);
}

void FlexGrid::Unselect() {
  row_ = 0;
  selection_.Clear();
  if (peer_) peer_->RowsChanged();
  ReportSelection();
}

bool FlexGrid::IsSelected(int row) const {
  return selection_.Contains(row);
}

int FlexGrid::ChosenRow() const {
  if (selection_.Contains(row_)) return row_;
  return selection_.Count() == 1 ? selection_.Ranges().front().First : 0;
}

std::vector<int> FlexGrid::SelectedRows() const {
  return selection_.Rows();
}

void FlexGrid::SetRow(int row) {
  CheckRow(row);
  row_ = row;
  selection_.Clear();
  if (row > 0) selection_.Add(row, row);
  ShowSelection();
}

void FlexGrid::SelectRows(int first, int last) {
  CheckRow(first);
  CheckRow(last);
  row_ = std::max(first, 1);
  selection_.Clear();
  selection_.Add(row_, last);
  ShowSelection();
}

void FlexGrid::SelectRows(const RowSelection& rows) {
  selection_ = rows;
  selection_.Remove(Rows(), INT32_MAX);
  row_ = selection_.Count() > 0 ? selection_.Ranges().front().First : 0;
  ShowSelection();
}

void FlexGrid::SelectAll() {
  selection_.Clear();
  selection_.Add(1, Rows() - 1);
  ShowSelection();
}

void FlexGrid::ShowRow(int row) {
  CheckRow(row);
  if (peer_ && row > 0) peer_->RowShown(row);
}

int FlexGrid::TopRow() const {
  const int shown = peer_ ? peer_->TopRow() : 0;
  return std::min(shown > 0 ? shown : topRow_, Rows() - 1);
}

void FlexGrid::SetTopRow(int row) {
  CheckRow(row);
  topRow_ = row;
  if (peer_ && row > 0) peer_->TopRowChanged(row);
}

void FlexGrid::ShowSelection() {
  if (peer_) peer_->SelectionChanged();
  ReportSelection();
}

void FlexGrid::ReportSelection() const {
  if (SelectionChange) SelectionChange();
}

int FlexGrid::FindRow(StringView text, int startRow, int column) const {
  CheckColumn(column);
  const CaseFolding& folding = Folding();
  const String prefix = folding.Folded(text);
  const bool hasIndex = column > 0 && finder_.Columns().Name == column;
  const String word = hasIndex ? SearchFolding().Folded(text) : String();
  const WordIndex::Start start(StringView(word).substr(0, word.find(u' ')));
  // Of the signs beyond ASCII, some become a letter in upper case.
  const bool isAsciiSign = word.empty() && !text.empty() && text.front() < 0x80;
  const bool indexed = hasIndex && (!word.empty() || isAsciiSign);
  const int rows = Rows();
  for (int row = std::max(startRow, 1); row < rows; ++row) {
    if (indexed && !finder_.MayBegin(rows_.OriginOf(row - 1), start)) continue;
    if (folding.StartsWith(rows_.Text(row - 1, column), prefix)) return row;
  }
  return -1;
}

void FlexGrid::SetSearchColumns(const SearchColumns& columns) {
  for (const int column : {columns.Name, columns.Company, columns.Number}) CheckColumn(column);
  if (columns == finder_.Columns()) return;
  finder_.Start(columns);
  IndexRows();
  indexing_.Stop();
  IndexOwnRows();
}

int FlexGrid::FindFirst(StringView typed, int startRow) const {
  const int row = finder_.First(rows_, SearchFolding(), typed, std::max(startRow, 1) - 1);
  return row < 0 ? -1 : row + 1;
}

int FlexGrid::FindNext(StringView typed, int row, bool backward) const {
  const int found = finder_.Next(rows_, SearchFolding(), typed, row - 1, backward);
  return found < 0 ? -1 : found + 1;
}

void FlexGrid::IndexRows() {
  if (source_ && finder_.Columns() != SearchColumns{}) finder_.Extend(*source_, SearchFolding());
}

void FlexGrid::IndexOwnRows() {
  if (indexing_.IsRunning() || finder_.Columns() == SearchColumns{}) return;
  const auto goOn = [this] { return finder_.ExtendOwn(rows_, SearchFolding()); };
  try {
    if (goOn()) indexing_.Start(Parent().Display(), goOn);
  } catch (const std::bad_alloc&) {
    // The texts of rows that are not indexed are read.
  }
}

const LetterFolding& FlexGrid::SearchFolding() const {
  if (!searchFolding_) {
    searchFolding_ = std::make_unique<LetterFolding>(Parent().Display().UserLanguage());
  }
  return *searchFolding_;
}

const CaseFolding& FlexGrid::Folding() const {
  if (!folding_) folding_ = std::make_unique<CaseFolding>(Parent().Display().UserLanguage());
  return *folding_;
}

void FlexGrid::Sort(int column, SortOrder order) {
  CheckColumn(column);
  sorting_.Stop();
  column = Shown(column);
  if (order == SortOrder::None) {
    Reorder([this] { return rows_.Unsort(); });
  } else if (column != sortColumn_ || order != sortOrder_ || !sortIsCurrent_) {
    RowSort sort(rows_, Parent().Display().UserLanguage(), column, order == SortOrder::Ascending);
    while (sort.GoOn()) {
    }
    Reorder([&sort] { return sort.Finish(); });
  }
  Sorted(column, order);
}

void FlexGrid::Sorted(int column, SortOrder order) {
  sortColumn_ = order == SortOrder::None ? -1 : column;
  sortOrder_ = order;
  sortIsCurrent_ = true;
  if (peer_) peer_->RowsChanged();
}

void FlexGrid::Reorder(const std::function<GridRows::FormerRows()>& change) {
  try {
    Reordered(change());
  } catch (...) {
    row_ = 0;
    selection_.Clear();
    if (peer_) peer_->RowsChanged();
    throw;
  }
}

void FlexGrid::Reordered(const GridRows::FormerRows& formerRows) {
  if (formerRows.empty()) {
    if (row_ >= Rows()) row_ = 0;
    selection_.Remove(Rows(), INT32_MAX);
    return;
  }
  RowSelection selection;
  int current = 0;
  for (std::size_t place = 0; place < formerRows.size(); ++place) {
    const int row = static_cast<int>(place) + 1;
    const auto former = static_cast<std::int64_t>(formerRows[place]) + 1;
    if (former > INT32_MAX) continue;
    if (selection_.Contains(static_cast<int>(former))) selection.Add(row, row);
    if (former == row_) current = row;
  }
  selection_ = std::move(selection);
  row_ = current;
}

void FlexGrid::SetRedraw(bool redraw) {
  if (redraw == redraw_) return;
  redraw_ = redraw;
  if (peer_) peer_->RedrawChanged();
}

void FlexGrid::UserPresses(std::int16_t keyCode, std::int16_t shift) {
  if (KeyDown) KeyDown(keyCode, shift);
}

void FlexGrid::UserDoubleClicks() {
  if (DoubleClick) DoubleClick();
}

void FlexGrid::UserReleases(MouseButton button, std::int16_t shift, int row) {
  if (MouseUp) MouseUp(button, shift, row);
}

void FlexGrid::UserClicksHeading(int column) {
  CheckColumn(column);
  if (!UserCanSort) return;
  const bool sorted = sortColumn_ == Shown(column) && sortOrder_ == SortOrder::Ascending;
  bool ascending =
      (sorted && sortIsCurrent_) || ColumnAt(column).HeadingPicture == Image::SortAscending;
  if (IsSorting() && soughtColumn_ == column) ascending = soughtOrder_ == SortOrder::Ascending;
  const SortOrder order = ascending ? SortOrder::Descending : SortOrder::Ascending;
  SortInSlices(column, order);
}

void FlexGrid::SortInSlices(int column, SortOrder order) {
  CheckColumn(column);
  constexpr int kFewRows = 10000;
  if (Rows() <= kFewRows || order == SortOrder::None) {
    Sort(column, order);
    if (AfterSort) AfterSort(column, order);
    return;
  }
  soughtColumn_ = column;
  soughtOrder_ = order;
  Screen& screen = Parent().Display();
  auto sort = std::make_shared<RowSort>(rows_, screen.UserLanguage(), Shown(column),
                                        order == SortOrder::Ascending);
  sorting_.Start(screen, [this, sort, column, order] {
    if (sort->GoOn()) return true;
    Reorder([&sort] { return sort->Finish(); });
    Sorted(Shown(column), order);
    sorting_.Stop();
    if (AfterSort) AfterSort(column, order);
    return false;
  });
}

void FlexGrid::UserSizesColumn(int column, int width) {
  GridColumn& sized = ColumnAt(column);
  sized.Width = width;
  if (!sized.Key.empty()) userWidths_[sized.Key] = width;
}

void FlexGrid::UserSelects(const std::vector<int>& rows, int focused) {
  selection_.Clear();
  for (const int row : rows) {
    if (row > 0 && row < Rows()) selection_.Add(row, row);
  }
  UserSelectsRange(1, 0, true, focused);
}

void FlexGrid::UserSelectsRange(int first, int last, bool selected, int focused) {
  first = std::max(first, 1);
  last = std::min(last, Rows() - 1);
  if (selected) {
    selection_.Add(first, last);
  } else {
    selection_.Remove(first, last);
  }
  row_ = focused > 0 && focused < Rows() ? focused : 0;
  ReportSelection();
}

int FlexGrid::Shown(int column) const {
  return column == 0 ? FixedColumnShows : column;
}

void FlexGrid::CheckRow(int row) const {
  if (row < 0 || row >= Rows()) {
    throw Error(ErrorNumber::SubscriptOutOfRange);
  }
}

void FlexGrid::CheckColumn(int column) const {
  if (column < 0 || column >= Cols()) {
    throw Error(ErrorNumber::SubscriptOutOfRange);
  }
}

}  // namespace ktrv::controls
