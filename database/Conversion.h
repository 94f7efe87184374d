#pragma once

#include <optional>

#include "common/Variant.h"
#include "database/Types.h"

namespace ktrv::database {

/// Converts a value to the type; null stays null. \param size maximum UTF-16 units of a text; 0:
/// unlimited. \param narrow limits integers to 4 bytes
/// \throws Error DataConversion if the value does not fit
Variant ConvertTo(DataType type, const Variant& value, std::int64_t size = 0, bool narrow = false);

/// Parses the text of a cell as its column's type. A text that does not parse stays text, because
/// some engines store any value in any column.
Variant CellValue(DataType type, std::optional<StringView> text);

/// The text form of a cell's value; nullopt for null.
std::optional<String> CellTextOf(const Variant& value);

/// Whether a column that now holds `cell` may have been set to `written`. Ignores trailing blanks,
/// because fixed-length columns are padded.
bool IsHeld(StringView cell, StringView written);

}  // namespace ktrv::database
