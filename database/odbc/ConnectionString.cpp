#include "database/odbc/ConnectionString.h"

#include <algorithm>
#include <utility>

namespace ktrv::database::odbc {
namespace {

/// Removes the first "keyword=value" from the string and returns it.
std::pair<StringView, String> TakePair(StringView& rest) {
  const std::size_t equals = rest.find_first_of(u"=;");
  if (equals == StringView::npos || rest[equals] == u';') {
    const StringView word = rest.substr(0, equals);
    rest.remove_prefix(equals == StringView::npos ? rest.size() : equals + 1);
    return {Trim(word), String()};
  }
  const StringView keyword = Trim(rest.substr(0, equals));
  rest = LTrim(rest.substr(equals + 1));
  String value;
  if (!rest.empty() && rest[0] == u'{') {
    std::size_t at = 1;
    for (; at < rest.size(); ++at) {
      if (rest[at] == u'}' && rest.substr(at, 2) != u"}}") break;
      if (rest[at] == u'}') ++at;  // a doubled brace is an escaped one
      value += rest[at];
    }
    rest.remove_prefix(std::min(at + 1, rest.size()));
    rest.remove_prefix(std::min(rest.find(u';'), rest.size()));
  } else {
    const StringView plain = rest.substr(0, rest.find(u';'));
    value = Trim(plain);
    rest.remove_prefix(plain.size());
  }
  if (!rest.empty()) rest.remove_prefix(1);
  return {keyword, value};
}

String Quoted(StringView value) {
  if (value.find_first_of(u"[]{}(),;?*=!@ ") == StringView::npos) return String(value);
  String quoted = u"{";
  for (const char16_t unit : value) {
    quoted += unit;
    if (unit == u'}') quoted += unit;
  }
  return quoted + u"}";
}

bool HasKeyword(StringView connectionString, StringView keyword) {
  while (!connectionString.empty()) {
    if (EqualsIgnoringCase(TakePair(connectionString).first, keyword)) return true;
  }
  return false;
}

}  // namespace

String KeywordValue(StringView connectionString, StringView keyword) {
  while (!connectionString.empty()) {
    auto [name, value] = TakePair(connectionString);
    if (EqualsIgnoringCase(name, keyword)) return value;
  }
  return {};
}

String WithKeyword(StringView connectionString, StringView keyword, StringView value) {
  String longer(connectionString);
  if (!longer.empty() && longer.back() != u';') longer += u';';
  return longer.append(keyword) + u"=" + Quoted(value);
}

String CompleteConnectionString(StringView connectionString, StringView user, StringView password) {
  String complete(connectionString);
  if (!user.empty()) complete = WithKeyword(complete, u"Uid", user);
  if (!password.empty()) complete = WithKeyword(complete, u"Pwd", password);
  const String driver = ToUpperAscii(KeywordValue(complete, u"Driver"));
  const auto addDefault = [&](StringView keyword, StringView value) {
    if (!HasKeyword(complete, keyword)) complete = WithKeyword(complete, keyword, value);
  };
  // Statements of a parameter array that are sent in one batch.
  if (driver.find(u"POSTGRES") != String::npos) addDefault(u"BatchSize", u"500");
  if (driver.find(u"SQLITE") == String::npos) return complete;
  addDefault(u"StepAPI", u"1");
  addDefault(u"NoCreat", u"1");
  addDefault(u"Timeout", u"3000");
  return complete;
}

}  // namespace ktrv::database::odbc
