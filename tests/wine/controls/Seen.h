#pragma once

#include <windows.h>

#include <set>

#include "controls/TreeView.h"

/// What a user sees of a list and a tree, and does with the system's mouse; rows count from 1, as a
/// grid's do, and places are pixels of the window.
namespace ktrv::windows::Seen {

std::set<int> SelectedRows(HWND list);
/// 0 when there is none.
int CurrentRow(HWND list);
/// Null when none is selected.
controls::TreeNode* Node(HWND tree);

/// On the row's text, scrolled into view.
POINT MiddleOf(HWND list, int row);
/// Right of the last column, at the height of the row.
POINT Beside(HWND list, int row);
/// On the node's text; left of the tree when it is not in sight.
POINT PlaceOf(HWND tree, const controls::TreeNode& node);

/// Draws a rubber band in steps that the list sees one by one. \param keys MK_SHIFT and MK_CONTROL
void Band(HWND list, POINT from, POINT to, UINT keys);

/// Another window has the keyboard for a while. \param disabled the form is out of use meanwhile.
/// \param first the form gets the keyboard before the other window goes.
void TakeFocusAway(HWND form, bool disabled, bool first);

}  // namespace ktrv::windows::Seen
