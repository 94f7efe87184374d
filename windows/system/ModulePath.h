#pragma once

#include <string>

namespace ktrv::windows {

/// Full path of the module that this code stands in: the DLL's, not the host program's.
/// \throws Error DriverFailure
std::wstring ModulePath();

/// Keeps the module loaded until the process ends, whoever gives it up.
void KeepModuleLoaded() noexcept;

}  // namespace ktrv::windows
