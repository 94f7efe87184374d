#pragma once

#include "common/Text.h"

namespace ktrv::data {

/// The text with every "{id}" replaced by the id.
/// \throws Error TypeMismatch unless the id is decimal digits and nothing else, so that no key of a
/// damaged database becomes part of a statement.
String WithId(StringView text, StringView id);

}  // namespace ktrv::data
