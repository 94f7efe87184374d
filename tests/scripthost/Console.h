#pragma once

#include <string_view>

namespace ktrv::scripthost::Console {

/// Writes one line in UTF-8, whatever the console's code page is.
void PrintLine(std::wstring_view text);
void PrintErrorLine(std::wstring_view text);

}  // namespace ktrv::scripthost::Console
