#pragma once

#include <windows.h>

#include <string>

/// Reads and works the popup menu and the message boxes that this process shows.
namespace ktrv::scripthost::UiMenus {

/// The popup menu that is open now; null when there is none.
HMENU Popup();

/// Its items, one a line: the captions, "-" for a separator and a caption in round brackets for an
/// item that cannot be chosen.
std::wstring Items(HMENU menu);

/// Clicks the item with this caption. \return false when there is none.
bool Choose(HMENU menu, const std::wstring& caption);

/// A message box's icon (error, question, warning, information or none) and its buttons from left
/// to right, joined by bars; the default button has a star.
std::wstring BoxLooks(HWND box);

/// The clipboard's text; empty when it holds none.
std::wstring ClipboardText();

}  // namespace ktrv::scripthost::UiMenus
