#pragma once

#include <windows.h>

#include <string>
#include <string_view>

/// Does to windows of this process what a user does, with the system's own mouse and keyboard: the
/// window must be in sight, and what happens is what would happen to a person. Returns before the
/// window has taken notice, so that a click that opens a modal dialog does not wait for its end.
namespace ktrv::scripthost::UiInput {

/// Asks for the window, a top-level one, to be before the others, of other processes too.
void BringToFront(HWND window);
bool IsInFront(HWND window);
/// For messages of failures.
std::wstring WhatIsInFrontOf(HWND window);

/// \param at in the window's client pixels. \param keys MK_SHIFT and MK_CONTROL, or 0.
void Click(HWND window, POINT at, UINT keys);
void ClickMiddle(HWND window);
/// At a place of the screen, whatever lies there: a menu's item.
void ClickScreen(POINT at);
void DoubleClick(HWND window, POINT at);
/// \param keys as for Click.
void RightClick(HWND window, POINT at, UINT keys = 0);

/// Moves the mouse there.
void Point(HWND window, POINT at);

/// Presses the left button at `from`, moves in small steps to `to` and lets go there.
void Drag(HWND window, POINT from, POINT to, UINT keys = 0);

/// Types the text, or presses one key named by its virtual-key code, with the keys of MK_SHIFT and
/// MK_CONTROL held, in the window; a window without the focus is clicked first.
void Type(HWND window, std::wstring_view text);
void Press(HWND window, WORD key, UINT keys);

/// Presses a key for whatever has the keyboard.
void PressAnywhere(WORD key);
/// The key goes down so many times, as when it is held, and then up.
void Hold(HWND window, WORD key, int times);

/// Presses a key together with Alt.
void PressAlt(HWND window, WORD key);

}  // namespace ktrv::scripthost::UiInput
