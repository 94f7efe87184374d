#pragma once

#include <string>
#include <string_view>

#include "common/Text.h"

namespace ktrv::windows {

/// The same UTF-16 units as wchar_t, the type of the Win32 API.
std::wstring ToWide(StringView text);
String FromWide(std::wstring_view text);

}  // namespace ktrv::windows
