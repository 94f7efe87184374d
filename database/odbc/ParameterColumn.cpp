#include "database/odbc/ParameterColumn.h"

#include <algorithm>
#include <utility>

#include "database/odbc/IntegerForm.h"
#include "database/odbc/ParameterBuffer.h"
#include "database/odbc/TextForm.h"

namespace ktrv::database::odbc {

bool ParameterColumn::Bind(SQLHANDLE statement, std::size_t index, const Parameter& parameter,
                           Rows rows, Engine engine, const Dialogue& dialogue) {
  const auto any = [&](auto is) {
    return std::any_of(rows.begin(), rows.end(), [&](const auto& row) { return is(row[index]); });
  };
  const bool allNull = !any([](const Variant& value) { return !IsNull(value); });
  // A column of nulls is bound as its parameter says.
  const auto holds = [&]<class Kind>(Kind, DataType type) {
    if (allNull) return parameter.Type == type;
    return !any([](const Variant& value) {
      return !IsNull(value) && !std::holds_alternative<Kind>(value);
    });
  };
  const auto bind = [&](SQLSMALLINT form, SQLSMALLINT type, SQLULEN digits, SQLSMALLINT fraction,
                        SQLPOINTER data) {
    Checked(SQLBindParameter(statement, static_cast<SQLUSMALLINT>(index + 1), SQL_PARAM_INPUT, form,
                             type, digits, fraction, data, 0, lengths_.data()),
            SQL_HANDLE_STMT, statement, dialogue);
    return true;
  };
  lengths_.clear();
  if (holds(std::int64_t{}, DataType::Integer)) {
    const IntegerForm form;
    const auto isWide = [&](const Variant& value) {
      const auto* number = std::get_if<std::int64_t>(&value);
      return number && IntegerForm::Of(*number) != form;
    };
    if (any(isWide)) return false;
    Fill<std::int64_t>(numbers_, rows, index,
                       [](std::int64_t number) { return static_cast<SQLINTEGER>(number); });
    return bind(form.InMemory, form.InDatabase, form.Digits, 0, numbers_.data());
  }
  if (holds(double{}, DataType::Double)) {
    Fill<double>(fractions_, rows, index, [](double fraction) { return fraction; });
    return bind(SQL_C_DOUBLE, SQL_DOUBLE, 15, 0, fractions_.data());
  }
  if (holds(DateTime{}, DataType::Date)) {
    Fill<DateTime>(dates_, rows, index, TimestampOf);
    return bind(SQL_C_TYPE_TIMESTAMP, SQL_TYPE_TIMESTAMP, 23, 3, dates_.data());
  }
  if (holds(String{}, DataType::VarChar) || holds(String{}, DataType::VarWChar)) {
    BindTexts(statement, index, parameter, rows, engine, dialogue);
    return true;
  }
  return false;
}

template <class Kind, class Value, class Convert>
void ParameterColumn::Fill(std::vector<Value>& values, Rows rows, std::size_t index,
                           Convert convert) {
  values.clear();
  for (const auto& row : rows) {
    const auto* value = std::get_if<Kind>(&row[index]);
    values.push_back(value ? convert(*value) : Value{});
    lengths_.push_back(value ? 0 : SQL_NULL_DATA);
  }
}

void ParameterColumn::BindTexts(SQLHANDLE statement, std::size_t index, const Parameter& parameter,
                                Rows rows, Engine engine, const Dialogue& dialogue) {
  std::vector<String> texts;
  std::size_t longest = 1;
  for (const auto& row : rows) {
    const auto* text = std::get_if<String>(&row[index]);
    texts.push_back(text ? TextForDriver(*text, engine, dialogue) : String());
    lengths_.push_back(text ? static_cast<SQLLEN>(texts.back().size() * sizeof(char16_t))
                            : SQL_NULL_DATA);
    longest = std::max(longest, texts.back().size());
  }
  const TextForm form = TextForm::OfAll(parameter, texts);
  texts_.assign(longest * rows.size(), u'\0');
  for (std::size_t row = 0; row < texts.size(); ++row) {
    std::copy(texts[row].begin(), texts[row].end(),
              texts_.begin() + static_cast<std::ptrdiff_t>(row * longest));
  }
  Checked(SQLBindParameter(statement, static_cast<SQLUSMALLINT>(index + 1), SQL_PARAM_INPUT,
                           SQL_C_WCHAR, form.InDatabase, form.Size, 0, texts_.data(),
                           static_cast<SQLLEN>(longest * sizeof(char16_t)), lengths_.data()),
          SQL_HANDLE_STMT, statement, dialogue);
}

}  // namespace ktrv::database::odbc
