#pragma once

#include <optional>

#include "common/Text.h"

namespace ktrv::windows {

/// The clipboard's text; nothing when it holds none or another program does not let go of it.
std::optional<String> ReadClipboard();

/// \throws Error when another program does not let go of the clipboard.
void WriteClipboard(StringView text);

}  // namespace ktrv::windows
