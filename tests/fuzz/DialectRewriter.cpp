#include "database/DialectRewriter.h"

#include <algorithm>
#include <vector>

#include "common/Error.h"
#include "database/SqlTokenizer.h"
#include "tests/fuzz/Input.h"

namespace ktrv::fuzz {
namespace {

using database::Engine;
using database::SqlToken;
using Kind = SqlToken::Kind;
using Tokens = std::vector<SqlToken>;

bool IsOneOf(StringView text, std::initializer_list<StringView> words) {
  return std::any_of(words.begin(), words.end(),
                     [&](StringView word) { return EqualsIgnoringCase(text, word); });
}

/// Whether any token may be rewritten.
bool HasDialect(const Tokens& tokens) {
  return std::any_of(tokens.begin(), tokens.end(), [](const SqlToken& token) {
    return IsOneOf(token.Text, {u"+", u"||", u"ISNULL", u"NVL", u"TO_CHAR", u"UNION"});
  });
}

/// The tokens that no rewriting adds, removes or moves.
std::vector<StringView> Kept(const Tokens& tokens) {
  std::vector<StringView> kept;
  for (const SqlToken& token : tokens) {
    if (token.KindOf == Kind::Space || (token.KindOf == Kind::Mark && token.Text != u"?")) continue;
    const bool written = IsOneOf(
        token.Text, {u"''", u"1", u"AS", u"BY", u"CAST", u"COALESCE", u"CONCAT", u"CONCAT_WS",
                     u"ISNULL", u"NVL", u"ORDER", u"TEXT", u"TO_CHAR", u"VARCHAR"});
    if (!written) kept.push_back(token.Text);
  }
  return kept;
}

void Try(StringView sql) {
  const Tokens tokens = database::TokenizeSql(sql);
  String joined;
  for (const SqlToken& token : tokens) {
    Demand(!token.Text.empty(), "each token takes something");
    joined += token.Text;
  }
  DemandEqual(joined, sql, "the tokens join to the text");
  for (const Engine engine : {Engine::SqlServer, Engine::Oracle, Engine::Other}) {
    DemandEqual(database::RewriteForEngine(sql, engine), sql, "the text of a known family stays");
  }
  for (const Engine engine : {Engine::Sqlite, Engine::MySql, Engine::PostgreSql}) {
    String written;
    try {
      written = database::RewriteForEngine(sql, engine);
    } catch (const Error& error) {
      Demand(error.Number() == ErrorNumber::SyntaxOrPermission, "only the nesting is refused");
      continue;
    }
    if (!HasDialect(tokens)) DemandEqual(written, sql, "there is nothing to write anew");
    const auto kept = Kept(tokens);
    const Tokens writtenTokens = database::TokenizeSql(written);
    Demand(Kept(writtenTokens) == kept, "names, literals and parameters are as they were");
    const auto empty = [](const SqlToken& token) { return token.Text == u"''"; };
    Demand(std::ranges::count_if(writtenTokens, empty) >= std::ranges::count_if(tokens, empty),
           "no empty literal goes");
  }
}

}  // namespace
}  // namespace ktrv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ktrv::fuzz::Try(ktrv::fuzz::Input(data, size).Text());
  return 0;
}
