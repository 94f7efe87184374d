#pragma once

#include "common/Text.h"

namespace ktrv::data {

/// The text with every place for the id replaced by it.
/// \throws Error TypeMismatch unless the id is decimal digits and nothing else, so that no key of a
/// damaged database becomes part of a statement.
String WithId(StringView text, StringView id, StringView place = u"{id}");

}  // namespace ktrv::data
