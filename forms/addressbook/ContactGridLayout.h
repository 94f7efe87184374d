#pragma once

#include <vector>

#include "controls/FlexGrid.h"
#include "forms/addressbook/ListedItem.h"

/// Columns of the contact grid.
namespace ktrv::forms::ContactGridLayout {

// Column keys.
inline constexpr StringView kId = u"ID";
inline constexpr StringView kName = u"NAME";
inline constexpr StringView kFolderId = u"FOLDERID";
inline constexpr StringView kType = u"CONTACTTYPE";

/// The visible columns, for the time before the first list.
std::vector<controls::GridColumn> FirstColumns();

/// Sets keys, headings, widths and alignments of the columns. No effect if the grid shows no list.
void Apply(controls::FlexGrid& grid);

/// Whether the grid shows a list; it may be empty.
bool IsList(const controls::FlexGrid& grid);

/// Whether the grid shows a list with at least one row.
bool HasRows(const controls::FlexGrid& grid);

/// The selected rows in display order; none if the grid shows no list.
std::vector<ListedItem> SelectedItems(const controls::FlexGrid& grid);

}  // namespace ktrv::forms::ContactGridLayout
