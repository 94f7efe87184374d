#pragma once

#include <cstdint>

#include "database/odbc/Native.h"

namespace ktrv::database::odbc {

/// How a whole number goes into a parameter.
struct IntegerForm {
  SQLSMALLINT InMemory = SQL_C_SLONG;
  SQLSMALLINT InDatabase = SQL_INTEGER;
  SQLULEN Digits = 10;

  /// The smallest form that the number fits. Oracle's driver has none of 8 bytes, and ids fit 4.
  static IntegerForm Of(std::int64_t number);

  bool operator==(const IntegerForm&) const = default;
};

}  // namespace ktrv::database::odbc
