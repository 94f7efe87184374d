#pragma once

// Prevents macros from mapping ANSI functions to wide ones. Wide functions are called by name;
// SQLite's driver is called with UTF-8.
#define SQL_NOUNICODEMAP
#ifdef _WIN32
#include <windows.h>
#endif
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <cstdint>

#include "common/Text.h"
#include "common/Unique.h"

namespace ktrv::database::odbc {

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t));

inline SQLWCHAR* Wide(char16_t* text) {
  return reinterpret_cast<SQLWCHAR*>(text);
}

/// For input arguments: ODBC declares them non-const, but does not change them.
inline SQLWCHAR* Wide(StringView text) {
  return Wide(const_cast<char16_t*>(text.data()));
}

inline SQLCHAR* Narrow(const std::string& text) {
  return reinterpret_cast<SQLCHAR*>(const_cast<char*>(text.data()));
}

/// Casts an integer attribute value to SQLPOINTER.
inline SQLPOINTER Number(SQLULEN number) {
  return reinterpret_cast<SQLPOINTER>(static_cast<std::uintptr_t>(number));
}

template <SQLSMALLINT Kind>
void FreeHandle(SQLHANDLE handle) {
  SQLFreeHandle(Kind, handle);
}

using EnvironmentHandle = Unique<SQLHANDLE, FreeHandle<SQL_HANDLE_ENV>>;
using ConnectionHandle = Unique<SQLHANDLE, FreeHandle<SQL_HANDLE_DBC>>;
using StatementHandle = Unique<SQLHANDLE, FreeHandle<SQL_HANDLE_STMT>>;

/// How a driver is called.
struct Dialogue {
  bool Utf8 = false;        ///< UTF-8 instead of UTF-16
  String Source = u"ODBC";  ///< the driver's name, used as source of errors
};

/// Returns the result if it is SQL_SUCCESS, SQL_SUCCESS_WITH_INFO or SQL_NO_DATA. All ODBC calls
/// that may fail are wrapped in it. \throws Error with the first diagnostic record of the handle
SQLRETURN Checked(SQLRETURN result, SQLSMALLINT kind, SQLHANDLE handle, const Dialogue& dialogue);

/// Whether arrays of parameters arrive whole. Wine's driver manager after 8.0 passes on only the
/// first of the lengths, so that drivers read random texts for the other rows.
bool PassesParameterArrays();

}  // namespace ktrv::database::odbc
