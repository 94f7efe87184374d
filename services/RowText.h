#pragma once

#include <vector>

#include "controls/FlexGrid.h"

namespace ktrv {

/// Rows as text for the clipboard: a line per row, cells separated by tabs. Skips columns that are
/// hidden or have no heading. Tabs and line breaks in cells become blanks. \param rows row numbers;
/// 0 for the headings
String RowsText(const controls::FlexGrid& grid, const std::vector<int>& rows);
/// The headings and the selected rows. Empty if no row is selected.
String SelectedRowsText(const controls::FlexGrid& grid);

}  // namespace ktrv
