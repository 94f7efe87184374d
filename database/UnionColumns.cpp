#include "database/UnionColumns.h"

#include <algorithm>
#include <vector>

#include "database/SqlTokenizer.h"

namespace ktrv::database {
namespace {

using Kind = SqlToken::Kind;
using Tokens = std::vector<SqlToken>;

/// One item of a select list: the tokens of its value, without alias.
struct Item {
  std::size_t First = 0;
  std::size_t Last = 0;  ///< inclusive
  StringView Column;     ///< the column's name if the item is a plain column, else empty
};

bool Is(const SqlToken& token, StringView word) {
  return token.KindOf == Kind::Word && EqualsIgnoringCase(token.Text, word);
}

bool IsMark(const SqlToken& token, StringView mark) {
  return token.KindOf == Kind::Mark && token.Text == mark;
}

Item ItemOf(const Tokens& tokens, std::size_t first, std::size_t end) {
  std::vector<std::size_t> parts;
  for (std::size_t at = first; at < end && !Is(tokens[at], u"AS"); ++at) {
    if (tokens[at].KindOf != Kind::Space) parts.push_back(at);
  }
  if (parts.empty()) return {};
  Item item{parts.front(), parts.back(), {}};
  bool column = parts.size() % 2 == 1;  // names with points between them
  for (std::size_t index = 0; index < parts.size(); ++index) {
    const SqlToken& token = tokens[parts[index]];
    column = column && (index % 2 == 0 ? token.KindOf == Kind::Word : IsMark(token, u"."));
  }
  if (column) item.Column = tokens[parts.back()].Text;
  return item;
}

/// The select lists of the SELECTs outside parentheses; empty unless all of them are combined by
/// UNION.
std::vector<std::vector<Item>> SelectLists(const Tokens& tokens) {
  std::vector<std::vector<Item>> lists;
  std::size_t itemStart = 0;
  bool inList = false;
  bool united = true;
  int depth = 0;
  for (std::size_t at = 0; at < tokens.size(); ++at) {
    if (IsMark(tokens[at], u"(")) ++depth;
    if (IsMark(tokens[at], u")")) --depth;
    if (depth > 0) continue;
    const bool ends = Is(tokens[at], u"FROM") || Is(tokens[at], u"UNION");
    united = united || Is(tokens[at], u"UNION");
    if (inList && (ends || IsMark(tokens[at], u","))) {
      lists.back().push_back(ItemOf(tokens, itemStart, at));
      itemStart = at + 1;
      inList = !ends;
    } else if (Is(tokens[at], u"SELECT")) {
      if (!united) return {};
      united = false;
      lists.emplace_back();
      itemStart = at + 1;
      inList = true;
    }
  }
  if (inList) lists.back().push_back(ItemOf(tokens, itemStart, tokens.size()));
  return lists;
}

/// Whether all lists have a plain column at this place, but not all with the same name.
bool IsUnlike(const std::vector<std::vector<Item>>& lists, std::size_t place) {
  const StringView first = lists.front()[place].Column;
  bool unlike = false;
  for (const auto& list : lists) {
    if (list[place].Column.empty()) return false;
    unlike = unlike || !EqualsIgnoringCase(list[place].Column, first);
  }
  return unlike;
}

}  // namespace

String UniteUnlikeColumns(StringView sql) {
  const Tokens tokens = TokenizeSql(sql);
  const auto lists = SelectLists(tokens);
  const bool united = lists.size() > 1 && std::all_of(lists.begin(), lists.end(), [&](auto& list) {
                        return list.size() == lists.front().size();
                      });
  if (!united) return String(sql);
  std::vector<const Item*> cast;
  for (std::size_t place = 0; place < lists.front().size(); ++place) {
    if (!IsUnlike(lists, place)) continue;
    for (const auto& list : lists) cast.push_back(&list[place]);
  }
  String text;
  for (std::size_t at = 0; at < tokens.size(); ++at) {
    const auto starts = [&](const Item* item) { return item->First == at; };
    const auto ends = [&](const Item* item) { return item->Last == at; };
    if (std::any_of(cast.begin(), cast.end(), starts)) AppendApart(text, u"CAST(");
    text += tokens[at].Text;
    if (std::any_of(cast.begin(), cast.end(), ends)) text += u" AS VARCHAR)";
  }
  return text;
}

String WithOrderOfUnion(StringView sql) {
  const Tokens tokens = TokenizeSql(sql);
  bool united = false;
  int depth = 0;
  std::size_t end = 0;  // of the last token that is not a space
  std::size_t at = 0;
  const SqlToken* last = nullptr;
  for (const SqlToken& token : tokens) {
    at += token.Text.size();
    if (token.KindOf != Kind::Space) {
      end = at;
      last = &token;
    }
    if (IsMark(token, u"(")) ++depth;
    if (IsMark(token, u")")) --depth;
    if (depth > 0) continue;
    if (Is(token, u"ORDER") || Is(token, u"ALL") || IsMark(token, u";")) return String(sql);
    united = united || Is(token, u"UNION");
  }
  if (!united || IsOpen(*last)) return String(sql);
  return String(sql.substr(0, end)).append(u" ORDER BY 1").append(sql.substr(end));
}

}  // namespace ktrv::database
