#pragma once

#include <cstdint>

#include "database/odbc/Native.h"

namespace ktrv::database::odbc {

/// C and SQL type of an integer parameter.
struct IntegerForm {
  SQLSMALLINT InMemory = SQL_C_SLONG;
  SQLSMALLINT InDatabase = SQL_INTEGER;
  SQLULEN Digits = 10;

  /// The smallest form for the number. Oracle's driver does not support 8 bytes, and ids fit in 4.
  static IntegerForm Of(std::int64_t number);

  bool operator==(const IntegerForm&) const = default;
};

}  // namespace ktrv::database::odbc
