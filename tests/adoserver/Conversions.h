#pragma once

#include <optional>

#include "database/Types.h"
#include "tests/adoserver/Arguments.h"

namespace ktrv::adoserver {

/// Whether the number is that of a type that parameters can have here.
bool IsParameterType(std::int32_t type);
/// Whether values of the type have a length that the size limits.
bool IsVariableLength(std::int32_t type);
/// What ODBC takes for the parameter type.
database::DataType DataTypeOf(std::int32_t type);

/// The value as one of the parameter type, brought there as ADO does: what cannot be one, and a
/// text of more than `size` characters, is refused with DataConversion. Null and empty stay.
Value Coerced(const VARIANT& value, std::int32_t type, std::int64_t size);

/// What goes to ODBC for a coerced value. Narrow texts pass through the system's code page.
Variant ForOdbc(const Value& value, std::int32_t type);

/// A field's type number for a column.
std::int32_t FieldType(const database::Column& column);
/// A field's value of that type for a cell. SQLite lets any value into any column and compares it
/// as it was written, so there a value that its type would lose or change is handed out as text.
/// \throws Error kCannotConvert when the cell holds no value of its type, on the other engines
Value FieldValue(const database::Column& column, std::optional<StringView> cell,
                 database::Engine engine);

}  // namespace ktrv::adoserver
