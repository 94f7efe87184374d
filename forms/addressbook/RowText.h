#pragma once

#include "controls/FlexGrid.h"

namespace ktrv::forms {

/// The selected rows as text for the clipboard: a line with the headings, then a line per row,
/// cells separated by tabs. Skips columns that are hidden or have no heading. Tabs and line breaks
/// in cells become blanks. Empty if no row is selected.
String SelectedRowsText(const controls::FlexGrid& grid);

}  // namespace ktrv::forms
