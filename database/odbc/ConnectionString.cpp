#include "database/odbc/ConnectionString.h"

#include <algorithm>
#include <optional>
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

/// The keyword in upper case without blanks and underscores.
String PlainName(StringView keyword) {
  String plain = ToUpperAscii(keyword);
  std::erase_if(plain, [](char16_t unit) { return unit == u' ' || unit == u'_'; });
  return plain;
}

/// The value as a number of seconds; empty if it is not one.
std::optional<std::chrono::seconds> SecondsOf(StringView value) {
  constexpr std::size_t kDigits = 6;  // some days
  const auto isDigit = [](char16_t unit) { return unit >= u'0' && unit <= u'9'; };
  if (value.empty() || value.size() > kDigits || !std::ranges::all_of(value, isDigit)) return {};
  std::int64_t seconds = 0;
  for (const char16_t unit : value) seconds = 10 * seconds + (unit - u'0');
  return std::chrono::seconds(seconds);
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

bool MayBePostgreSql(StringView connectionString) {
  const String driver = ToUpperAscii(KeywordValue(connectionString, u"Driver"));
  return driver.empty() || driver.find(u"POSTGRES") != String::npos;
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

TimeLimits TimeLimitsOf(StringView connectionString, TimeLimits otherwise) {
  constexpr StringView kOpening[] = {u"CONNECTTIMEOUT", u"CONNECTIONTIMEOUT", u"CONNTIMEOUT",
                                     u"LOGINTIMEOUT"};
  constexpr StringView kStatement[] = {u"COMMANDTIMEOUT", u"QUERYTIMEOUT"};
  TimeLimits limits = otherwise;
  while (!connectionString.empty()) {
    const auto [keyword, value] = TakePair(connectionString);
    const auto seconds = SecondsOf(value);
    if (!seconds) continue;
    const String name = PlainName(keyword);
    if (std::ranges::find(kOpening, name) != std::end(kOpening)) limits.Opening = *seconds;
    if (std::ranges::find(kStatement, name) != std::end(kStatement)) limits.Statement = *seconds;
  }
  return limits;
}

std::chrono::seconds LongestForEachServer(StringView connectionString) {
  const auto all = std::chrono::ceil<std::chrono::seconds>(TimeLimitsOf(connectionString).Opening);
  if (all.count() == 0) return all;
  const auto servers = std::ranges::count(KeywordValue(connectionString, u"Server"), u',') + 1;
  return std::max(all / servers, std::chrono::seconds(1));
}

}  // namespace ktrv::database::odbc
