#pragma once

#include <windows.h>

/// The registry entries that COM needs to create clsMain objects and to load the type library.
namespace ktrv::windows::Registration {

enum class For { Machine, User };

/// Writes the entries. \return S_OK or the first failure
HRESULT Write(For whom) noexcept;

/// Removes the entries; missing ones are no failure. Entries used by the DLL of the other bitness
/// stay. \return S_OK or the first failure
HRESULT Remove(For whom) noexcept;

}  // namespace ktrv::windows::Registration
