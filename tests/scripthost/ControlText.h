#pragma once

#include <windows.h>
#include <commctrl.h>

#include <string>

/// Reads what lists and trees of this process show.
namespace ktrv::scripthost::ControlText {

/// The list view's rows, one a line, with the texts of its visible columns in the order shown and
/// a tab between two.
std::wstring Rows(HWND list);

/// The tree view's nodes in the order shown, one a line, two blanks before the text for each level.
std::wstring Nodes(HWND tree);

/// The first node with this text; null when there is none.
HTREEITEM Node(HWND tree, const std::wstring& text);

}  // namespace ktrv::scripthost::ControlText
