#pragma once

#include <windows.h>

#include <span>

namespace ktrv::windows {

/// Whether the letter stands underlined in the window's text, as a capital or not.
bool IsMnemonicOf(HWND window, wchar_t letter);

/// Goes to the control that the letter stands underlined for, or presses it. \param controls in the
/// order of their making, null for those that are gone. \return false when there is none
bool PressMnemonic(std::span<const HWND> controls, wchar_t letter);

}  // namespace ktrv::windows
