#pragma once

#include <optional>
#include <string>

#include "common/Text.h"

namespace ktrv::tool {

/// Appends a JSON string with its quotes, in UTF-8; an unpaired surrogate as an escape, so that no
/// text is changed.
void AppendJson(std::string& json, StringView text);

/// Appends a JSON string, or null.
void AppendJsonOrNull(std::string& json, std::optional<StringView> text);

}  // namespace ktrv::tool
