#include "database/SqlTokenizer.h"

#include <algorithm>

namespace ktrv::database {
namespace {

using Kind = SqlToken::Kind;

bool IsSpace(char16_t unit) {
  return unit == u' ' || (unit >= u'\t' && unit <= u'\r');
}

bool IsDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}

bool IsNameUnit(char16_t unit) {
  return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || IsDigit(unit) ||
         unit == u'_' || unit == u'$' || unit == u'#' || unit == u'@' || unit >= 0x80;
}

/// The length including the closing quote; a doubled quote is an escaped one.
std::size_t QuotedLength(StringView rest, char16_t closing) {
  for (std::size_t at = 1; at < rest.size(); ++at) {
    if (rest[at] != closing) continue;
    if (at + 1 == rest.size() || rest[at + 1] != closing) return at + 1;
    ++at;
  }
  return rest.size();
}

std::size_t LengthUntil(StringView rest, StringView end) {
  const std::size_t at = rest.find(end, 2);
  return at == StringView::npos ? rest.size() : at + end.size();
}

std::size_t SpanLength(StringView rest, bool (*belongs)(char16_t)) {
  return static_cast<std::size_t>(std::find_if_not(rest.begin(), rest.end(), belongs) -
                                  rest.begin());
}

SqlToken NextToken(StringView rest) {
  const char16_t first = rest[0];
  const StringView two = rest.substr(0, 2);
  const auto token = [&](Kind kind, std::size_t length) {
    return SqlToken{kind, rest.substr(0, length)};
  };
  if (IsSpace(first)) return token(Kind::Space, SpanLength(rest, IsSpace));
  if (two == u"--") return token(Kind::Space, LengthUntil(rest, u"\n"));
  if (two == u"/*") return token(Kind::Space, LengthUntil(rest, u"*/"));
  if (first == u'\'') return token(Kind::Literal, QuotedLength(rest, u'\''));
  if (two == u"N'" || two == u"n'") {
    return token(Kind::Literal, 1 + QuotedLength(rest.substr(1), u'\''));
  }
  if (first == u'"' || first == u'`') return token(Kind::Word, QuotedLength(rest, first));
  if (first == u'[') return token(Kind::Word, QuotedLength(rest, u']'));
  if (IsDigit(first)) {
    const auto belongs = [](char16_t unit) { return IsNameUnit(unit) || unit == u'.'; };
    return token(Kind::Number, SpanLength(rest, belongs));
  }
  if (IsNameUnit(first)) return token(Kind::Word, SpanLength(rest, IsNameUnit));
  return token(Kind::Mark, two == u"||" ? 2 : 1);
}

/// Whether the text ends with a number like "1.", which goes on with any unit of a name.
bool EndsWithPointOfNumber(StringView text) {
  if (!text.ends_with(u'.')) return false;
  const auto belongs = [](char16_t unit) { return IsNameUnit(unit) || unit == u'.'; };
  const auto start = std::find_if_not(text.rbegin(), text.rend(), belongs).base();
  return TokenizeSql(StringView(start, text.end())).back().KindOf == Kind::Number;
}

bool WouldMerge(StringView before, StringView behind) {
  if (before.empty() || behind.empty() || !IsNameUnit(behind.front())) return false;
  return IsNameUnit(before.back()) || EndsWithPointOfNumber(before);
}

}  // namespace

std::vector<SqlToken> TokenizeSql(StringView sql) {
  std::vector<SqlToken> tokens;
  while (!sql.empty()) {
    tokens.push_back(NextToken(sql));
    sql.remove_prefix(tokens.back().Text.size());
  }
  return tokens;
}

void AppendApart(String& sql, StringView more) {
  if (WouldMerge(sql, more)) sql += u' ';
  sql += more;
}

bool IsOpen(const SqlToken& token) {
  const bool quoted = token.KindOf == Kind::Literal || token.KindOf == Kind::Word;
  return quoted && TokenizeSql(String(token.Text) + u" ").size() == 1;
}

}  // namespace ktrv::database
