#include "database/odbc/ParameterColumn.h"

#include <algorithm>
#include <utility>

#include "database/odbc/IntegerForm.h"
#include "database/odbc/ParameterBuffer.h"
#include "database/odbc/TextForm.h"

namespace ktrv::database::odbc {

bool ParameterColumn::Bind(SQLHANDLE statement, std::size_t index, const Parameter& parameter,
                           Rows rows, Engine engine, const Dialogue& dialogue) {
  const auto isNarrowNumber = [&](const std::vector<Variant>& row) {
    const auto* number = std::get_if<std::int64_t>(&row[index]);
    return number && IntegerForm::Of(*number) == IntegerForm{};
  };
  const auto isText = [&](const std::vector<Variant>& row) {
    return std::holds_alternative<String>(row[index]);
  };
  lengths_.clear();
  if (std::all_of(rows.begin(), rows.end(), isNarrowNumber)) {
    BindNumbers(statement, index, rows, dialogue);
    return true;
  }
  if (std::all_of(rows.begin(), rows.end(), isText)) {
    BindTexts(statement, index, parameter, rows, engine, dialogue);
    return true;
  }
  return false;
}

void ParameterColumn::BindNumbers(SQLHANDLE statement, std::size_t index, Rows rows,
                                  const Dialogue& dialogue) {
  numbers_.clear();
  for (const auto& row : rows) {
    numbers_.push_back(static_cast<SQLINTEGER>(std::get<std::int64_t>(row[index])));
    lengths_.push_back(0);
  }
  const IntegerForm form;
  Checked(SQLBindParameter(statement, static_cast<SQLUSMALLINT>(index + 1), SQL_PARAM_INPUT,
                           form.InMemory, form.InDatabase, form.Digits, 0, numbers_.data(), 0,
                           lengths_.data()),
          SQL_HANDLE_STMT, statement, dialogue);
}

void ParameterColumn::BindTexts(SQLHANDLE statement, std::size_t index, const Parameter& parameter,
                                Rows rows, Engine engine, const Dialogue& dialogue) {
  std::vector<String> texts;
  TextForm form = TextForm::Of(parameter, {});
  std::size_t longest = 1;
  for (const auto& row : rows) {
    texts.push_back(TextForDriver(std::get<String>(row[index]), engine, dialogue));
    const TextForm own = TextForm::Of(parameter, texts.back());
    const bool isWide = own.InDatabase == SQL_WVARCHAR || own.InDatabase == SQL_WLONGVARCHAR;
    if (isWide || own.Size > form.Size) form.InDatabase = own.InDatabase;
    form.Size = std::max(form.Size, own.Size);
    longest = std::max(longest, texts.back().size());
  }
  texts_.assign(longest * rows.size(), u'\0');
  for (std::size_t row = 0; row < texts.size(); ++row) {
    std::copy(texts[row].begin(), texts[row].end(),
              texts_.begin() + static_cast<std::ptrdiff_t>(row * longest));
    lengths_.push_back(static_cast<SQLLEN>(texts[row].size() * sizeof(char16_t)));
  }
  Checked(SQLBindParameter(statement, static_cast<SQLUSMALLINT>(index + 1), SQL_PARAM_INPUT,
                           SQL_C_WCHAR, form.InDatabase, form.Size, 0, texts_.data(),
                           static_cast<SQLLEN>(longest * sizeof(char16_t)), lengths_.data()),
          SQL_HANDLE_STMT, statement, dialogue);
}

}  // namespace ktrv::database::odbc
