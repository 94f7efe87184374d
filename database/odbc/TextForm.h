#pragma once

#include "database/Types.h"
#include "database/odbc/Native.h"

namespace ktrv::database::odbc {

/// How a text goes into a parameter.
struct TextForm {
  SQLSMALLINT InDatabase = SQL_WVARCHAR;
  std::size_t Size = 1;  ///< units, 1 or more

  /// As narrow as the parameter is declared, unless the text would lose by it.
  static TextForm Of(const Parameter& parameter, StringView text);
};

}  // namespace ktrv::database::odbc
