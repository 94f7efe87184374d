#pragma once

#include "common/Text.h"

namespace ktrv::data {

/// Replaces each occurrence of `place` in `text` by the id.
/// \throws Error TypeMismatch unless the id consists of decimal digits only. Prevents SQL injection
/// through a damaged database.
String WithId(StringView text, StringView id, StringView place = u"{id}");

}  // namespace ktrv::data
