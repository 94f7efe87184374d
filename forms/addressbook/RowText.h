#pragma once

#include "controls/FlexGrid.h"

namespace ktrv::forms {

/// The selected rows of the grid as text for the clipboard: a line of headings and a line for each
/// row, cells separated by tabs. Columns that are hidden or have no heading are left out, and tabs
/// and line breaks within a cell become blanks. Empty when no row is selected.
String SelectedRowsText(const controls::FlexGrid& grid);

}  // namespace ktrv::forms
