#pragma once

#include <windows.h>

#include "windows/controls/Scale.h"

namespace ktrv::windows {

/// A plain window in a cool bar that holds a label and the box it names.
HWND CreateBand(HWND coolBar);

/// Puts the label and then the box into their band, one beside the other.
/// \param boxWidth twips
/// \return the size that they need, pixels
SIZE LayOutLabelAndBox(HWND label, HWND box, HFONT font, Scale scale, int boxWidth);

}  // namespace ktrv::windows
