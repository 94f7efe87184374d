#include "database/DialectRewriter.h"

#include <algorithm>
#include <vector>

#include "common/Error.h"
#include "database/SqlTokenizer.h"
#include "database/UnionColumns.h"

namespace ktrv::database {
namespace {

using Kind = SqlToken::Kind;

/// Words that separate operands and cannot be operands.
constexpr StringView kKeywords[] = {
    u"ALL",    u"AND",    u"AS",   u"ASC",   u"BETWEEN", u"BY",     u"DESC",  u"DISTINCT", u"ELSE",
    u"END",    u"EXISTS", u"FROM", u"GROUP", u"HAVING",  u"IN",     u"INNER", u"INSERT",   u"INTO",
    u"IS",     u"JOIN",   u"LEFT", u"LIKE",  u"NOT",     u"ON",     u"OR",    u"ORDER",    u"OUTER",
    u"SELECT", u"SET",    u"THEN", u"UNION", u"UPDATE",  u"VALUES", u"WHEN",  u"WHERE"};

bool Is(const SqlToken& token, StringView word) {
  return token.KindOf == Kind::Word && EqualsIgnoringCase(token.Text, word);
}

bool IsKeyword(const SqlToken& token) {
  return std::any_of(std::begin(kKeywords), std::end(kKeywords),
                     [&](StringView word) { return Is(token, word); });
}

bool IsMark(const SqlToken& token, StringView mark) {
  return token.KindOf == Kind::Mark && token.Text == mark;
}

String Joined(const std::vector<String>& parts, StringView separator) {
  String whole;
  for (std::size_t index = 0; index < parts.size(); ++index) {
    whole.append(index == 0 ? StringView() : separator).append(parts[index]);
  }
  return whole;
}

/// Maximum depth of recursion: more than statements need, and safe for the stack of a host's
/// thread.
constexpr int kDeepest = 200;

struct Operand {
  String Text;
  bool Literal = false;  // a text literal, never null
  bool Numeric = false;
};

/// Rewrites the text in one pass by recursive descent.
class Rewriter {
 public:
  Rewriter(StringView sql, Engine engine) : tokens_(TokenizeSql(sql)), engine_(engine) {}

  String WholeText() {
    String text;
    while (next_ < tokens_.size()) {
      AppendApart(text, Sequence());
      if (next_ < tokens_.size()) text += Take();  // a parenthesis or comma at the top
    }
    return text;
  }

  /// Whether a parenthesis or a quote was not closed. Such a text must be sent unchanged, because
  /// rewriting might close it.
  bool LeftOpen() const { return unclosed_ || (!tokens_.empty() && IsOpen(tokens_.back())); }

 private:
  bool AtEnd() const { return next_ == tokens_.size(); }
  StringView Take() { return tokens_[next_++].Text; }

  /// The position of the next token that is not a space; the end if there is none.
  std::size_t Significant(std::size_t position) const {
    while (position < tokens_.size() && tokens_[position].KindOf == Kind::Space) ++position;
    return position;
  }

  bool StartsOperand(std::size_t position) const {
    if (position >= tokens_.size()) return false;
    const SqlToken& token = tokens_[position];
    if (token.KindOf == Kind::Word) return !IsKeyword(token);
    return token.KindOf == Kind::Literal || token.KindOf == Kind::Number || IsMark(token, u"(") ||
           IsMark(token, u"?");
  }

  bool IsAnyMark(std::size_t position, std::initializer_list<StringView> marks) const {
    return position < tokens_.size() &&
           std::any_of(marks.begin(), marks.end(),
                       [&](StringView mark) { return IsMark(tokens_[position], mark); });
  }

  /// Rewrites up to a comma, a closing parenthesis or END, which it does not consume.
  String Sequence() {
    if (++depth_ > kDeepest) {
      throw Error(ErrorNumber::SyntaxOrPermission, u"The statement is nested too deeply.");
    }
    String text;
    bool behindMinus = false;
    while (!AtEnd()) {
      const SqlToken& token = tokens_[next_];
      if (IsMark(token, u")") || IsMark(token, u",") || Is(token, u"END")) break;
      if (StartsOperand(next_)) {
        AppendApart(text, Chain(behindMinus));
      } else {
        text += Take();
      }
      if (token.KindOf != Kind::Space) behindMinus = IsMark(token, u"-");
    }
    --depth_;
    return text;
  }

  /// Rewrites a chain of operands with "+" or "||", which have equal precedence and are
  /// left-associative.
  String Chain(bool behindMinus) {
    std::vector<Operand> operands;
    operands.push_back(Term());
    String asWritten = operands[0].Text;
    StringView lastOperator;
    bool sum = behindMinus;
    for (;;) {
      const std::size_t operatorAt = Significant(next_);
      const std::size_t operandAt = Significant(operatorAt + 1);
      if (!IsAnyMark(operatorAt, {u"+", u"||"}) || !StartsOperand(operandAt)) break;
      const StringView joinOperator = tokens_[operatorAt].Text;
      if (!lastOperator.empty() && joinOperator != lastOperator) {
        operands = {{Combined(lastOperator, operands), false, false}};
      }
      lastOperator = joinOperator;
      while (next_ < operandAt) asWritten += Take();
      operands.push_back(Term());
      asWritten += operands.back().Text;
    }
    if (lastOperator.empty()) return operands[0].Text;
    sum = sum || IsAnyMark(Significant(next_), {u"-"}) ||
          std::any_of(operands.begin(), operands.end(),
                      [](const Operand& operand) { return operand.Numeric; });
    if (sum && lastOperator == u"+") return asWritten;
    return Combined(lastOperator, operands);
  }

  String Combined(StringView joinOperator, const std::vector<Operand>& operands) const {
    const bool nullIsEmpty = joinOperator == u"||";
    std::vector<String> parts;
    parts.reserve(operands.size());
    for (const Operand& operand : operands) parts.push_back(operand.Text);
    if (engine_ == Engine::MySql) {
      return nullIsEmpty ? u"CONCAT_WS('', " + Joined(parts, u", ") + u")"
                         : u"CONCAT(" + Joined(parts, u", ") + u")";
    }
    if (nullIsEmpty && engine_ == Engine::PostgreSql) {
      return u"CONCAT(" + Joined(parts, u", ") + u")";
    }
    for (std::size_t index = 0; nullIsEmpty && index < parts.size(); ++index) {
      if (!operands[index].Literal) parts[index] = u"COALESCE(" + parts[index] + u", '')";
    }
    return Joined(parts, u" || ");
  }

  Operand Term() {
    Operand term = Primary();
    for (;;) {
      const std::size_t operatorAt = Significant(next_);
      const std::size_t operandAt = Significant(operatorAt + 1);
      if (!IsAnyMark(operatorAt, {u"*", u"/", u"%"}) || !StartsOperand(operandAt)) return term;
      while (next_ < operandAt) term.Text += Take();
      term.Text += Primary().Text;
      term.Literal = false;
      term.Numeric = true;
    }
  }

  Operand Primary() {
    const SqlToken& token = tokens_[next_];
    if (token.KindOf == Kind::Literal) return {String(Take()), true, false};
    if (token.KindOf == Kind::Number) return {String(Take()), false, true};
    if (IsMark(token, u"(")) return {u"(" + Joined(Arguments(), u",") + u")", false, false};
    if (Is(token, u"CASE")) return {Case(), false, false};
    String name(Take());
    if (token.KindOf == Kind::Mark) return {name, false, false};
    while (IsAnyMark(next_, {u"."}) && next_ + 1 < tokens_.size() &&
           tokens_[next_ + 1].KindOf == Kind::Word) {
      name += Take();
      name += Take();
    }
    const std::size_t parenthesis = Significant(next_);
    if (!IsAnyMark(parenthesis, {u"("})) return {name, false, false};
    String gap;
    while (next_ < parenthesis) gap += Take();
    return {Call(name, gap, Arguments()), false, false};
  }

  String Case() {
    String text(Take());
    while (!AtEnd() && !Is(tokens_[next_], u"END")) {
      AppendApart(text, Sequence());
      if (!AtEnd() && !Is(tokens_[next_], u"END")) text += Take();
    }
    return AtEnd() ? text : text.append(Take());
  }

  /// The comma-separated arguments between parentheses. Consumes both parentheses.
  std::vector<String> Arguments() {
    Take();
    std::vector<String> arguments = {Sequence()};
    while (!AtEnd() && !IsMark(tokens_[next_], u")")) {
      if (IsMark(tokens_[next_], u",")) {
        Take();
        arguments.push_back(Sequence());
      } else {
        arguments.back().append(Take());
        AppendApart(arguments.back(), Sequence());
      }
    }
    if (AtEnd()) {
      unclosed_ = true;
    } else {
      Take();
    }
    return arguments;
  }

  String Call(StringView name, StringView gap, const std::vector<String>& arguments) const {
    const auto isCalled = [&](StringView function) { return EqualsIgnoringCase(name, function); };
    if ((isCalled(u"ISNULL") || isCalled(u"NVL")) && arguments.size() == 2) {
      return u"COALESCE(" + Joined(arguments, u",") + u")";
    }
    if (isCalled(u"TO_CHAR") && arguments.size() == 1) {
      // Unlike a cast, CONCAT gives a collation that MySQL can combine with any column's in a
      // UNION.
      if (engine_ == Engine::MySql) return u"CONCAT(" + arguments[0] + u")";
      const StringView type = engine_ == Engine::PostgreSql ? u"VARCHAR" : u"TEXT";
      return u"CAST(" + arguments[0] + u" AS " + String(type) + u")";
    }
    return String(name).append(gap) + u"(" + Joined(arguments, u",") + u")";
  }

  const std::vector<SqlToken> tokens_;
  const Engine engine_;
  std::size_t next_ = 0;
  int depth_ = 0;
  bool unclosed_ = false;
};

}  // namespace

String RewriteForEngine(StringView sql, Engine engine) {
  const bool rewritten =
      engine == Engine::Sqlite || engine == Engine::MySql || engine == Engine::PostgreSql;
  if (!rewritten) return String(sql);
  Rewriter rewriter(sql, engine);
  String text = rewriter.WholeText();
  if (rewriter.LeftOpen()) return String(sql);
  return engine == Engine::PostgreSql ? WithOrderOfUnion(UniteUnlikeColumns(text)) : text;
}

}  // namespace ktrv::database
