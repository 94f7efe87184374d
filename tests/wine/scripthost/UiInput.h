#pragma once

#include <windows.h>

#include <string_view>

/// Does to windows of this process what a user does. All is posted, never sent: a click that opens
/// a modal dialog returns at once.
namespace ktrv::scripthost::UiInput {

void ClickButton(HWND button);

/// \param x, y in the window's client pixels. \param keys MK_SHIFT and MK_CONTROL, or 0.
void Click(HWND window, POINT at, UINT keys);
void DoubleClick(HWND window, POINT at);
void RightClick(HWND window, POINT at);

/// Types the text into the window, character by character.
void Type(HWND window, std::wstring_view text);

/// Presses and lets go one key, named by its virtual-key code.
void Press(HWND window, WPARAM key);

}  // namespace ktrv::scripthost::UiInput
