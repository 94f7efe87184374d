#pragma once

#include <windows.h>

#include "windows/controls/Scale.h"

namespace ktrv::windows {

/// Creates a plain child window of a cool bar, for a label and its box.
HWND CreateBand(HWND coolBar);

/// Places the label and the box side by side in their band.
/// \param boxWidth twips
/// \return the required size in pixels
SIZE LayOutLabelAndBox(HWND label, HWND box, HFONT font, Scale scale, int boxWidth);

}  // namespace ktrv::windows
