#pragma once

#include <string>
#include <string_view>

#include "common/Text.h"

namespace ktrv::windows {

/// The same units in the type that the operating system takes.
std::wstring ToWide(StringView text);
String FromWide(std::wstring_view text);

}  // namespace ktrv::windows
