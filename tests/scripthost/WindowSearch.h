#pragma once

#include <windows.h>

#include <string>

/// Finds and reads windows; but for AnyTopLevel, those of this process.
namespace ktrv::scripthost::WindowSearch {

/// The visible top-level window with exactly this title; null when there is none.
HWND TopLevel(const std::wstring& title);
/// The same among the windows of all processes.
HWND AnyTopLevel(const std::wstring& title);

/// The visible descendant of this class, counted from 0 in the order of their creation; null when
/// there are fewer. Letter case does not matter.
HWND ChildOfClass(HWND parent, const std::wstring& className, int ordinal);

/// The visible descendant that shows this text, "&" left out of account; null when there is none.
HWND ChildWithText(HWND parent, const std::wstring& text);

/// The window's text as WM_GETTEXT tells it.
std::wstring Text(HWND window);

/// The class of the window that has the focus in this window's thread; empty when none has.
std::wstring FocusClass(HWND window);

/// Where the window lies in its parent's client area, in pixels.
RECT PlaceInParent(HWND window);

}  // namespace ktrv::scripthost::WindowSearch
