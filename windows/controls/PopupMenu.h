#pragma once

#include <windows.h>

#include "controls/Menu.h"

namespace ktrv::windows {

/// Shows the menu and runs the selected item's Click. \param place screen position in pixels
void ShowPopupMenu(HWND owner, controls::Menu& menu, POINT place);

}  // namespace ktrv::windows
