#pragma once

#include <windows.h>

#include <string>

namespace ktrv::windows {

/// The module that this code is in: the DLL, not the program that loaded it. Window classes and
/// resources are the module's.
HINSTANCE ThisModule();

/// Its full path. \throws Error DriverFailure
std::wstring ModulePath();

/// Keeps the module loaded until the process ends, whoever releases it.
void KeepModuleLoaded() noexcept;

}  // namespace ktrv::windows
