#include <sqlite3.h>

#include <memory>
#include <optional>
#include <vector>

#include "database/DialectRewriter.h"
#include "tests/fuzz/Input.h"

namespace ktrv::fuzz {
namespace {

using Value = std::optional<String>;

/// A generated SQL text of the two families and its expected value.
struct Expression {
  String Text;
  Value Result;
};

/// One row: A is a text, B null, C empty, I the number 7.
constexpr const char* kTable =
    "CREATE TABLE T (A, B, C, I); INSERT INTO T VALUES ('a b', NULL, '', 7)";
constexpr std::int64_t kI = 7;

class Writer {
 public:
  explicit Writer(Input& input) : input_(input) {}

  Expression Text(int depth) {
    Expression chain = Operand(depth);
    for (std::size_t more = depth > 0 ? input_.Number(3) : 0; more > 0; --more) {
      const bool bars = input_.Byte() % 2 == 1;
      const Expression operand = Operand(depth);
      chain.Text += Gap() + (bars ? u"||" : u"+") + Gap() + operand.Text;
      const bool isNull = !bars && (!chain.Result || !operand.Result);
      chain.Result = isNull ? Value() : chain.Result.value_or(u"") + operand.Result.value_or(u"");
    }
    return chain;
  }

  /// The values of the "?", in order.
  std::vector<Value> Parameters;

 private:
  String Gap() {
    constexpr StringView kGaps[] = {u"", u" ", u"\r\n", u"/* '+' || ( */", u" -- NVL(, \"\n"};
    return String(kGaps[input_.Number(std::size(kGaps) - 1)]);
  }

  Expression Literal() {
    constexpr StringView kTexts[] = {u"", u"x", u" + ", u"||", u"it''s", u"NVL(A, B)", u"?", u"--"};
    const StringView written = kTexts[input_.Number(std::size(kTexts) - 1)];
    String value(written);
    if (const auto at = value.find(u"''"); at != String::npos) value.erase(at, 1);
    return {u"'" + String(written) + u"'", value};
  }

  Expression Parameter() {
    const Value value = input_.Byte() % 4 == 0 ? Value() : u"p" + ToDecimal(std::ssize(Parameters));
    Parameters.push_back(value);
    return {u"?", value};
  }

  /// A sum: a number is among the operands.
  std::pair<String, std::int64_t> Sum() {
    const auto number = static_cast<std::int64_t>(input_.Number(9));
    switch (input_.Number(4)) {
      case 0:
        return {ToDecimal(number) + Gap() + u"+" + Gap() + u"I", number + kI};
      case 1:
        return {u"I * 2" + Gap() + u"+ I - " + ToDecimal(number), 3 * kI - number};
      case 2:
        return {u"I - " + ToDecimal(number) + u" + T.I", 2 * kI - number};
      case 3:
        return {u"(I + " + ToDecimal(number) + u") * I", (kI + number) * kI};
      default:
        return {u"I", kI};
    }
  }

  Expression Operand(int depth) {
    switch (input_.Number(depth > 0 ? 12 : 5)) {
      case 0:
        return Literal();
      case 1:
        return Parameter();
      case 2:
        return {u"A", u"a b"};
      case 3:
        return {u"T.B", std::nullopt};
      case 4:
        return {u"\"C\"", u""};
      case 5:
        return {u"null", std::nullopt};
      case 6: {
        const auto [text, value] = Sum();
        return {u"TO_CHAR" + Gap() + u"(" + Gap() + text + u")", ToDecimal(value)};
      }
      case 7: {
        const Expression inner = Text(depth - 1);
        return {u"(" + Gap() + inner.Text + Gap() + u")", inner.Result};
      }
      case 8:
      case 9: {
        const Expression first = Text(depth - 1);
        const StringView name = input_.Byte() % 2 == 1 ? u"IsNull" : u"NVL";
        const Expression second = Text(depth - 1);
        return {String(name) + Gap() + u"(" + first.Text + u"," + Gap() + second.Text + u")",
                first.Result ? first.Result : second.Result};
      }
      case 10: {
        const Expression inner = Text(depth - 1);
        Value trimmed = inner.Result;
        if (trimmed) trimmed = LTrim(*trimmed);
        return {u"LTRIM(" + inner.Text + u")", trimmed};
      }
      case 11: {
        const Expression inner = Text(depth - 1);
        return {u"TO_CHAR(" + inner.Text + u")", inner.Result};
      }
      default: {
        const Expression left = Text(depth - 1);
        const Expression right = Text(depth - 1);
        const Expression then = Text(depth - 1);
        const Expression other = Text(depth - 1);
        const bool same = left.Result && right.Result && *left.Result == *right.Result;
        return {u"CASE WHEN " + left.Text + u" = " + right.Text + u" THEN " + then.Text +
                    u" ELSE " + other.Text + u" END",
                same ? then.Result : other.Result};
      }
    }
  }

  Input& input_;
};

sqlite3* Database() {
  static sqlite3* const database = [] {
    sqlite3* opened = nullptr;
    Demand(sqlite3_open(":memory:", &opened) == SQLITE_OK, "a database");
    Demand(sqlite3_exec(opened, kTable, nullptr, nullptr, nullptr) == SQLITE_OK, "a table");
    return opened;
  }();
  return database;
}

void Try(Input input) {
  constexpr int kDepth = 4;
  constexpr std::size_t kLongest = 20000;
  Writer writer(input);
  const Expression expression = writer.Text(kDepth);
  const String query = u"SELECT " + expression.Text + u" FROM T";
  if (query.size() > kLongest) return;
  const std::string written = ToUtf8(database::RewriteForEngine(query, database::Engine::Sqlite));
  sqlite3_stmt* prepared = nullptr;
  sqlite3_prepare_v2(Database(), written.c_str(), -1, &prepared, nullptr);
  const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> statement(prepared,
                                                                             &sqlite3_finalize);
  if (!prepared) {
    std::fprintf(stderr, "%s\n%s\n%s\n", ToUtf8(query).c_str(), written.c_str(),
                 sqlite3_errmsg(Database()));
  }
  Demand(prepared != nullptr, "the engine understands it");
  for (std::size_t at = 0; at < writer.Parameters.size(); ++at) {
    const Value& value = writer.Parameters[at];
    if (!value) continue;
    sqlite3_bind_text(prepared, static_cast<int>(at) + 1, ToUtf8(*value).c_str(), -1,
                      SQLITE_TRANSIENT);
  }
  Demand(sqlite3_step(prepared) == SQLITE_ROW, "there is a row");
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(prepared, 0));
  const Value result = bytes ? Value(FromUtf8(bytes)) : std::nullopt;
  if (result == expression.Result) return;
  std::fprintf(stderr, "%s\n%s\ngives \"%s\" and should give \"%s\"\n", ToUtf8(query).c_str(),
               written.c_str(), ToUtf8(result.value_or(u"null")).c_str(),
               ToUtf8(expression.Result.value_or(u"null")).c_str());
  Demand(false, "it gives what was meant");
}

}  // namespace
}  // namespace ktrv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ktrv::fuzz::Try(ktrv::fuzz::Input(data, size));
  return 0;
}
