#pragma once

#include "controls/FlexGrid.h"

/// The columns of the contact grid.
namespace ktrv::forms::ContactGridLayout {

inline constexpr StringView kName = u"NAME";

/// Gives the grid that shows a list its keys, headings, widths and alignments. No effect on a grid
/// that shows none.
void Apply(controls::FlexGrid& grid);

/// Whether the grid shows a list with at least one row.
bool HasRows(const controls::FlexGrid& grid);

}  // namespace ktrv::forms::ContactGridLayout
