#include "database/odbc/TextForm.h"

#include <algorithm>

namespace ktrv::database::odbc {

TextForm TextForm::Of(const Parameter& parameter, StringView text) {
  constexpr std::size_t kLongestLimited = 4000;
  const std::size_t size =
      std::max({text.size(), static_cast<std::size_t>(parameter.Size), std::size_t{1}});
  const bool limited = size <= kLongestLimited;
  if (parameter.Type == DataType::VarChar && FitsCodePage(text)) {
    return {limited ? SQLSMALLINT{SQL_VARCHAR} : SQLSMALLINT{SQL_LONGVARCHAR}, size};
  }
  return {limited ? SQLSMALLINT{SQL_WVARCHAR} : SQLSMALLINT{SQL_WLONGVARCHAR}, size};
}

}  // namespace ktrv::database::odbc
