#pragma once

#include "controls/FlexGrid.h"

/// The columns of the contact grid.
namespace ktrv::forms::ContactGridLayout {

// Keys.
inline constexpr StringView kId = u"ID";
inline constexpr StringView kName = u"NAME";
inline constexpr StringView kFolderId = u"FOLDERID";
inline constexpr StringView kType = u"CONTACTTYPE";

/// Gives the grid that shows a list its keys, headings, widths and alignments. No effect on a grid
/// that shows none.
void Apply(controls::FlexGrid& grid);

/// Whether the grid shows a list, be it empty.
bool IsList(const controls::FlexGrid& grid);

/// Whether the grid shows a list with at least one row.
bool HasRows(const controls::FlexGrid& grid);

}  // namespace ktrv::forms::ContactGridLayout
