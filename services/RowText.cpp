#include "services/RowText.h"

#include <algorithm>

namespace ktrv {
namespace {

void AppendCell(String& text, StringView cell) {
  const std::size_t start = text.size();
  text += cell;
  std::replace_if(
      text.begin() + static_cast<std::ptrdiff_t>(start), text.end(),
      [](char16_t unit) { return unit == u'\t' || unit == u'\r' || unit == u'\n'; }, u' ');
}

void AppendRow(String& text, const controls::FlexGrid& grid, int row,
               const std::vector<int>& columns) {
  for (const int column : columns) {
    if (column != columns.front()) text += u'\t';
    AppendCell(text, grid.Text(row, column));
  }
  text += u"\r\n";
}

}  // namespace

String RowsText(const controls::FlexGrid& grid, const std::vector<int>& rows) {
  std::vector<int> columns;
  for (int column = 0; column < grid.Cols(); ++column) {
    const controls::GridColumn& design = grid.ColumnAt(column);
    if (!design.Hidden && !design.Heading.empty()) columns.push_back(column);
  }
  if (columns.empty()) return {};  // no list is shown
  String text;
  for (const int row : rows) AppendRow(text, grid, row, columns);
  return text;
}

String SelectedRowsText(const controls::FlexGrid& grid) {
  std::vector<int> rows = grid.SelectedRows();
  if (rows.empty()) return {};
  rows.insert(rows.begin(), 0);
  return RowsText(grid, rows);
}

}  // namespace ktrv
