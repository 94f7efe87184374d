#pragma once

#include <span>

#include "common/Text.h"

namespace ktrv::data {

/// Replaces each occurrence of `place` in `text` by the id.
/// \throws Error TypeMismatch unless the id consists of decimal digits only. Prevents SQL injection
/// through a damaged database.
String WithId(StringView text, StringView id, StringView place = u"{id}");

/// The ids, separated by commas, for IN (...). \throws as WithId does
String IdList(std::span<const String> ids);

}  // namespace ktrv::data
