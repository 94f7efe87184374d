#pragma once

#include <string>

#include "common/Text.h"

namespace ktrv::tool {

/// Appends the text in UTF-8; an unpaired surrogate becomes U+FFFD. Fast for ASCII.
void AppendUtf8(std::string& bytes, StringView text);

}  // namespace ktrv::tool
