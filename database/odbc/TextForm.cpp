#include "database/odbc/TextForm.h"

#include <algorithm>

namespace ktrv::database::odbc {
namespace {

TextForm FormFor(const Parameter& parameter, std::size_t longest, bool fitsCodePage) {
  constexpr std::size_t kLongestLimited = 4000;
  const std::size_t size =
      std::max({longest, static_cast<std::size_t>(parameter.Size), std::size_t{1}});
  const bool limited = size <= kLongestLimited;
  if (parameter.Type == DataType::VarChar && fitsCodePage) {
    return {limited ? SQLSMALLINT{SQL_VARCHAR} : SQLSMALLINT{SQL_LONGVARCHAR}, size};
  }
  return {limited ? SQLSMALLINT{SQL_WVARCHAR} : SQLSMALLINT{SQL_WLONGVARCHAR}, size};
}

}  // namespace

TextForm TextForm::Of(const Parameter& parameter, StringView text) {
  return FormFor(parameter, text.size(), FitsCodePage(text));
}

TextForm TextForm::OfAll(const Parameter& parameter, std::span<const String> texts) {
  std::size_t longest = 0;
  for (const String& text : texts) longest = std::max(longest, text.size());
  return FormFor(parameter, longest, std::all_of(texts.begin(), texts.end(), FitsCodePage));
}

}  // namespace ktrv::database::odbc
