#pragma once

#include <windows.h>

/// What COM has to find in the registry to make clsMain objects and to read the type library.
namespace ktrv::windows::Registration {

enum class For { Machine, User };

/// Writes it. \return S_OK or the first failure
HRESULT Write(For whom) noexcept;

/// Takes it away again; what is not there counts as taken away. What the DLL of the other width
/// needs stays. \return S_OK or the first failure
HRESULT Remove(For whom) noexcept;

}  // namespace ktrv::windows::Registration
