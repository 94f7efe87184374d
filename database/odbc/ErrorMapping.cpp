#include "database/odbc/ErrorMapping.h"

#include "common/Error.h"

namespace ktrv::database::odbc {
namespace {

struct StateNumber {
  StringView Start;  // prefix of the SQLSTATE
  std::int32_t Number;
};

// The first match counts.
constexpr StateNumber kStates[] = {
    {u"42S02", ErrorNumber::TableNotFound},      {u"42P01", ErrorNumber::TableNotFound},
    {u"23", ErrorNumber::IntegrityViolation},    {u"28000", ErrorNumber::LoginFailed},
    {u"28P01", ErrorNumber::LoginFailed},        {u"HYT0", ErrorNumber::TimedOut},
    {u"57014", ErrorNumber::CommandCancelled},   {u"HY008", ErrorNumber::CommandCancelled},
    {u"HY018", ErrorNumber::CommandCancelled},   {u"22", ErrorNumber::ValueMismatch},
    {u"07006", ErrorNumber::ValueMismatch},      {u"42", ErrorNumber::SyntaxOrPermission},
    {u"37000", ErrorNumber::SyntaxOrPermission},
};

std::int32_t NumberOfSqliteCode(std::int32_t code, StringView text) {
  switch (code & 0xFF) {  // the low byte of an extended code is the primary code
    case 1:
      return text.find(u"no such table") != StringView::npos ? ErrorNumber::TableNotFound
                                                             : ErrorNumber::SyntaxOrPermission;
    case 5:  // SQLITE_BUSY: another connection holds a lock on the file
    case 6:  // SQLITE_LOCKED: on the table
      return ErrorNumber::TimedOut;
    case 9:
      return ErrorNumber::CommandCancelled;
    case 19:
      return ErrorNumber::IntegrityViolation;
    case 20:
      return ErrorNumber::ValueMismatch;
    default:
      return ErrorNumber::DriverFailure;
  }
}

}  // namespace

std::int32_t NumberOfFailure(StringView state, std::int32_t native, StringView text, bool sqlite) {
  for (const StateNumber& known : kStates) {
    if (state.substr(0, known.Start.size()) == known.Start) return known.Number;
  }
  if (sqlite) return NumberOfSqliteCode(native, text);
  // ER_CHECKREAD: a row that a statement locks was changed after the transaction's first query.
  if (native == 1020 && text.find(u"MariaDB") != StringView::npos) return ErrorNumber::RowChanged;
  return ErrorNumber::DriverFailure;
}

}  // namespace ktrv::database::odbc
