#pragma once

#include <optional>

#include "common/Variant.h"
#include "database/Types.h"

namespace ktrv::database {

/// The value as one of the type. \param size most UTF-16 units of a text; 0 for no limit.
/// \throws Error DataConversion when it cannot be one: a text that is no number, a whole number of
/// more than 4 bytes when `narrow`, a text longer than the limit. Null fits every type.
Variant ConvertTo(DataType type, const Variant& value, std::int64_t size = 0, bool narrow = false);

/// The value that a cell's text stands for. A text that does not read as its column's type (some
/// engines let any value into any column) comes as text.
Variant CellValue(DataType type, std::optional<StringView> text);

/// The text that a cell of this value holds; nothing for null.
std::optional<String> CellTextOf(const Variant& value);

/// Whether a column that holds the one text may have been given the other, to the letter: columns
/// of a fixed length add blanks.
bool IsHeld(StringView cell, StringView written);

}  // namespace ktrv::database
