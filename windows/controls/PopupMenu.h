#pragma once

#include <windows.h>

#include "controls/Menu.h"

namespace ktrv::windows {

/// Shows the menu at a place on the screen, in pixels, and runs the chosen item's Click.
void ShowPopupMenu(HWND owner, controls::Menu& menu, POINT place);

}  // namespace ktrv::windows
