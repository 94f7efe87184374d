#pragma once

#include <windows.h>

#include <string>

namespace ktrv::windows {

/// The module of this code: the DLL, not the program that loaded it. Owner of the window classes
/// and resources.
HINSTANCE ThisModule();

/// The full path of the module. \throws Error DriverFailure
std::wstring ModulePath();

/// Pins the module: it stays loaded until the process ends.
void KeepModuleLoaded() noexcept;

}  // namespace ktrv::windows
