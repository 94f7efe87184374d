#pragma once

#include <windows.h>

namespace ktrv::windows {

/// The module that this code stands in: the DLL, not the program that loaded it. Window classes and
/// resources are the module's.
HINSTANCE ThisModule();

}  // namespace ktrv::windows
