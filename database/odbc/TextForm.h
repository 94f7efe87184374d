#pragma once

#include <span>

#include "database/Types.h"
#include "database/odbc/Native.h"

namespace ktrv::database::odbc {

/// SQL type and size of a text parameter.
struct TextForm {
  SQLSMALLINT InDatabase = SQL_WVARCHAR;
  std::size_t Size = 1;  ///< in UTF-16 units, at least 1

  /// The declared type, but wide if narrow text would lose characters.
  static TextForm Of(const Parameter& parameter, StringView text);
  /// One form for several texts of the parameter.
  static TextForm OfAll(const Parameter& parameter, std::span<const String> texts);
};

}  // namespace ktrv::database::odbc
