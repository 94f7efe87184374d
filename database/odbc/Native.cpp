#include "database/odbc/Native.h"

#include <cstdlib>

#include "common/Error.h"
#include "database/odbc/ErrorMapping.h"

namespace ktrv::database::odbc {
namespace {

constexpr SQLSMALLINT kStateUnits = 5;
constexpr SQLSMALLINT kTextUnits = 1024;  // longer messages are truncated

struct Diagnostic {
  String State;
  SQLINTEGER Native = 0;
  String Text;
};

Diagnostic ReadWide(SQLSMALLINT kind, SQLHANDLE handle) {
  Diagnostic record;
  char16_t state[kStateUnits + 1] = {};
  char16_t text[kTextUnits + 1] = {};
  if (SQL_SUCCEEDED(SQLGetDiagRecW(kind, handle, 1, Wide(state), &record.Native, Wide(text),
                                   kTextUnits, nullptr))) {
    record.State = state;
    record.Text = text;
  }
  return record;
}

Diagnostic ReadUtf8(SQLSMALLINT kind, SQLHANDLE handle) {
  Diagnostic record;
  char state[kStateUnits + 1] = {};
  char text[kTextUnits + 1] = {};
  if (SQL_SUCCEEDED(SQLGetDiagRec(kind, handle, 1, reinterpret_cast<SQLCHAR*>(state),
                                  &record.Native, reinterpret_cast<SQLCHAR*>(text), kTextUnits,
                                  nullptr))) {
    record.State = FromUtf8(state);
    record.Text = FromUtf8(text);
  }
  return record;
}

}  // namespace

SQLRETURN Checked(SQLRETURN result, SQLSMALLINT kind, SQLHANDLE handle, const Dialogue& dialogue) {
  if (SQL_SUCCEEDED(result) || result == SQL_NO_DATA) return result;
  Diagnostic record = dialogue.Utf8 ? ReadUtf8(kind, handle) : ReadWide(kind, handle);
  if (record.Text.empty()) record.Text = u"ODBC gave no reason for the failure";
  const bool sqlite = ToUpperAscii(record.Text).find(u"SQLITE") != StringView::npos ||
                      ToUpperAscii(dialogue.Source).find(u"SQLITE") != StringView::npos;
  throw Error(NumberOfFailure(record.State, record.Native, record.Text, sqlite), record.Text,
              dialogue.Source);
}

bool PassesParameterArrays() {
#ifdef _WIN32
  constexpr double kLastThatDoes = 8.0;
  using VersionOfWine = const char* (*)();
  const auto version = reinterpret_cast<VersionOfWine>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll"), "wine_get_version")));
  return !version || std::atof(version()) <= kLastThatDoes;
#else
  return true;
#endif
}

}  // namespace ktrv::database::odbc
