#include "database/ManyRows.h"

#include "database/SqlTokenizer.h"

namespace ktrv::database {
namespace {

bool IsWord(const SqlToken& token, StringView word) {
  return token.KindOf == SqlToken::Kind::Word && EqualsIgnoringCase(token.Text, word);
}

bool IsMark(const SqlToken& token, StringView mark) {
  return token.KindOf == SqlToken::Kind::Mark && token.Text == mark;
}

/// The row behind VALUES, with its brackets, if nothing follows; else empty.
StringView RowOf(StringView insert) {
  const std::vector<SqlToken> tokens = TokenizeSql(insert);
  if (tokens.empty() || !IsWord(tokens.front(), u"INSERT")) return {};
  const char16_t* begin = nullptr;
  int depth = 0;
  bool isBehindValues = false;
  bool isComplete = false;
  for (const SqlToken& token : tokens) {
    if (token.KindOf == SqlToken::Kind::Space) continue;
    if (isComplete) return {};
    if (!isBehindValues) {
      if (IsMark(token, u"?")) return {};
      isBehindValues = IsWord(token, u"VALUES");
      continue;
    }
    if (!begin) begin = token.Text.data();
    if (IsMark(token, u"(")) ++depth;
    if (IsMark(token, u")")) --depth;
    isComplete = depth == 0;
    if (isComplete && !IsMark(token, u")")) return {};
  }
  if (!isComplete) return {};
  return insert.substr(static_cast<std::size_t>(begin - insert.data()));
}

}  // namespace

String InsertOfRows(StringView insert, std::size_t rows) {
  const StringView row = RowOf(insert);
  if (row.empty()) return {};
  String text(insert);
  for (std::size_t count = 1; count < rows; ++count) text.append(u", ").append(row);
  return text;
}

}  // namespace ktrv::database
