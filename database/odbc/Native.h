#pragma once

// The wide functions are called by name where they are meant; no macro may turn the others into
// them, because SQLite's driver is spoken to in UTF-8 bytes.
#define SQL_NOUNICODEMAP
#ifdef _WIN32
#include <windows.h>
#endif
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <cstdint>
#include <utility>

#include "common/Text.h"

namespace ktrv::database::odbc {

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t));

inline SQLWCHAR* Wide(char16_t* text) {
  return reinterpret_cast<SQLWCHAR*>(text);
}

/// For input arguments, which ODBC declares as changeable and does not change.
inline SQLWCHAR* Wide(StringView text) {
  return Wide(const_cast<char16_t*>(text.data()));
}

inline SQLCHAR* Narrow(const std::string& text) {
  return reinterpret_cast<SQLCHAR*>(const_cast<char*>(text.data()));
}

/// A number where ODBC wants a pointer.
inline SQLPOINTER Number(SQLULEN number) {
  return reinterpret_cast<SQLPOINTER>(static_cast<std::uintptr_t>(number));
}

/// One ODBC handle, freed at its end.
template <SQLSMALLINT Kind>
class Handle {
 public:
  explicit Handle(SQLHANDLE raw) : raw_(raw) {}
  ~Handle() {
    if (raw_) SQLFreeHandle(Kind, raw_);
  }
  Handle(Handle&& other) noexcept : raw_(std::exchange(other.raw_, nullptr)) {}
  Handle& operator=(Handle&&) = delete;

  SQLHANDLE Get() const { return raw_; }

 private:
  SQLHANDLE raw_;
};

using EnvironmentHandle = Handle<SQL_HANDLE_ENV>;
using ConnectionHandle = Handle<SQL_HANDLE_DBC>;
using StatementHandle = Handle<SQL_HANDLE_STMT>;

/// How a driver is spoken to.
struct Dialogue {
  bool Utf8 = false;        ///< in UTF-8 bytes instead of UTF-16
  String Source = u"ODBC";  ///< its name, for failures
};

/// What the call returned, unless that is a failure: SQL_SUCCESS, SQL_SUCCESS_WITH_INFO or
/// SQL_NO_DATA. Every native call that can fail goes through here. \throws Error with the first
/// diagnostic record of the handle.
SQLRETURN Checked(SQLRETURN result, SQLSMALLINT kind, SQLHANDLE handle, const Dialogue& dialogue);

}  // namespace ktrv::database::odbc
