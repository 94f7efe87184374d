#pragma once

#include <array>
#include <string>

#include "common/Text.h"

namespace ktrv::tool {

/// Appends the text in UTF-8; an unpaired surrogate becomes U+FFFD. Fast for ASCII.
void AppendUtf8(std::string& bytes, StringView text);

/// Appends the text if it consists of such ASCII characters only. \return false if it does not;
/// nothing is appended then
bool AppendIf(std::string& bytes, StringView text, const std::array<bool, 128>& accepted);

}  // namespace ktrv::tool
