#pragma once

#include <optional>

#include "common/Text.h"

namespace ktrv::windows {

/// The text of the clipboard; nullopt if it holds none or another program keeps it open.
std::optional<String> ReadClipboard();

/// \throws Error if another program keeps the clipboard open
void WriteClipboard(StringView text);

}  // namespace ktrv::windows
