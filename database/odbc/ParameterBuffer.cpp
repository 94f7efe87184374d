#include "database/odbc/ParameterBuffer.h"

#include <algorithm>
#include <utility>

#include "common/Error.h"
#include "common/Surrogates.h"
#include "database/Conversion.h"
#include "database/odbc/IntegerForm.h"
#include "database/odbc/TextForm.h"

namespace ktrv::database::odbc {
namespace {

SQLSMALLINT SqlType(DataType type) {
  switch (type) {
    case DataType::Integer:
      return SQL_INTEGER;
    case DataType::Double:
      return SQL_DOUBLE;
    case DataType::Date:
      return SQL_TYPE_TIMESTAMP;
    case DataType::Boolean:
      return SQL_BIT;
    case DataType::VarChar:
      return SQL_VARCHAR;
    case DataType::VarWChar:
      return SQL_WVARCHAR;
  }
  return SQL_WVARCHAR;
}

/// Replaces unpaired surrogates. PostgreSQL's driver combines one with the following unit;
/// MariaDB's rejects the whole text.
String WellFormed(String text) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (IsHighSurrogate(text[at]) && at + 1 < text.size() && IsLowSurrogate(text[at + 1])) {
      ++at;
    } else if (IsHighSurrogate(text[at]) || IsLowSurrogate(text[at])) {
      text[at] = 0xFFFD;
    }
  }
  return text;
}

}  // namespace

SQL_TIMESTAMP_STRUCT TimestampOf(DateTime moment) {
  const auto day = std::chrono::floor<std::chrono::days>(moment);
  const std::chrono::year_month_day date{day};
  const std::chrono::hh_mm_ss time{moment - day};
  SQL_TIMESTAMP_STRUCT timestamp = {};
  timestamp.year = static_cast<SQLSMALLINT>(static_cast<int>(date.year()));
  timestamp.month = static_cast<SQLUSMALLINT>(static_cast<unsigned>(date.month()));
  timestamp.day = static_cast<SQLUSMALLINT>(static_cast<unsigned>(date.day()));
  timestamp.hour = static_cast<SQLUSMALLINT>(time.hours().count());
  timestamp.minute = static_cast<SQLUSMALLINT>(time.minutes().count());
  timestamp.second = static_cast<SQLUSMALLINT>(time.seconds().count());
  timestamp.fraction = static_cast<SQLUINTEGER>(time.subseconds().count() * 1'000'000);
  return timestamp;
}

String TextForDriver(String text, Engine engine, const Dialogue& dialogue) {
  if (engine == Engine::MySql || engine == Engine::PostgreSql) text = WellFormed(std::move(text));
  const bool endsAtZero =
      engine == Engine::Sqlite || engine == Engine::MySql || engine == Engine::PostgreSql;
  if (endsAtZero && text.find(u'\0') != String::npos) {
    throw Error(ErrorNumber::DataConversion,
                u"The text holds a zero, where the driver would end it", dialogue.Source);
  }
  return text;
}

void ParameterBuffer::Bind(SQLHANDLE statement, SQLUSMALLINT number, const Parameter& parameter,
                           const Variant& value, Engine engine, const Dialogue& dialogue) {
  const auto bind = [&](SQLSMALLINT form, SQLSMALLINT type, SQLULEN digits, SQLSMALLINT fraction,
                        SQLPOINTER data) {
    return SQLBindParameter(statement, number, SQL_PARAM_INPUT, form, type, digits, fraction, data,
                            0, &length_);
  };
  length_ = 0;
  SQLRETURN result = SQL_SUCCESS;
  if (IsNull(value)) {
    length_ = SQL_NULL_DATA;
    const auto size = static_cast<SQLULEN>(std::max<std::int64_t>(parameter.Size, 1));
    result = bind(SQL_C_WCHAR, SqlType(parameter.Type), size, 0, nullptr);
  } else if (const auto* whole = std::get_if<std::int64_t>(&value)) {
    const IntegerForm to = IntegerForm::Of(*whole);
    integer_ = *whole;
    narrowInteger_ = static_cast<SQLINTEGER>(*whole);
    const bool isNarrow = to.InMemory == SQL_C_SLONG;
    result = bind(to.InMemory, to.InDatabase, to.Digits, 0,
                  isNarrow ? static_cast<SQLPOINTER>(&narrowInteger_) : &integer_);
  } else if (const auto* fraction = std::get_if<double>(&value)) {
    double_ = *fraction;
    result = bind(SQL_C_DOUBLE, SQL_DOUBLE, 15, 0, &double_);
  } else if (const auto* truth = std::get_if<bool>(&value)) {
    truth_ = *truth ? 1 : 0;
    result = bind(SQL_C_BIT, SQL_BIT, 1, 0, &truth_);
  } else if (const auto* moment = std::get_if<DateTime>(&value);
             moment && engine != Engine::Sqlite) {
    timestamp_ = TimestampOf(*moment);
    result = bind(SQL_C_TYPE_TIMESTAMP, SQL_TYPE_TIMESTAMP, 23, 3, &timestamp_);
  } else {
    // SQLite stores dates as text. Use one format, so that equal dates compare equal.
    result =
        BindText(statement, number, parameter, TextForDriver(*CellTextOf(value), engine, dialogue));
  }
  Checked(result, SQL_HANDLE_STMT, statement, dialogue);
}

SQLRETURN ParameterBuffer::BindText(SQLHANDLE statement, SQLUSMALLINT number,
                                    const Parameter& parameter, String text) {
  text_ = std::move(text);
  length_ = static_cast<SQLLEN>(text_.size() * sizeof(char16_t));
  const TextForm form = TextForm::Of(parameter, text_);
  return SQLBindParameter(statement, number, SQL_PARAM_INPUT, SQL_C_WCHAR, form.InDatabase,
                          form.Size, 0, text_.data(), length_, &length_);
}

}  // namespace ktrv::database::odbc
