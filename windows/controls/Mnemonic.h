#pragma once

#include <windows.h>

#include <span>

namespace ktrv::windows {

/// Whether the letter is the access key in a text, case-insensitive.
bool IsMnemonicIn(const wchar_t* text, wchar_t letter);
/// Whether the letter is the access key in the window's text, case-insensitive.
bool IsMnemonicOf(HWND window, wchar_t letter);

/// Handles an access key: focuses or presses its control. \param controls in order of construction;
/// null for destroyed windows. \return false if no control has the key
bool PressMnemonic(std::span<const HWND> controls, wchar_t letter);

}  // namespace ktrv::windows
