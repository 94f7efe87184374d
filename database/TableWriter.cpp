#include "database/TableWriter.h"

#include <algorithm>
#include <utility>

#include "database/Conversion.h"
#include "database/DataError.h"
#include "database/Engines.h"
#include "database/SqlTokenizer.h"

namespace ktrv::database {
namespace {

struct Query {
  StringView SelectList;
  StringView Table;
};

/// Parses "SELECT list FROM table", optionally followed by WHERE or ORDER BY.
Query SingleTableQuery(StringView sql) {
  std::vector<SqlToken> tokens = TokenizeSql(sql);
  std::erase_if(tokens,
                [](const SqlToken& token) { return token.KindOf == SqlToken::Kind::Space; });
  const auto isWord = [&](std::size_t index, StringView word) {
    return index < tokens.size() && tokens[index].KindOf == SqlToken::Kind::Word &&
           EqualsIgnoringCase(tokens[index].Text, word);
  };
  const auto isPoint = [&](std::size_t index) {
    return index < tokens.size() && tokens[index].Text == u".";
  };
  std::size_t from = 1;
  while (from < tokens.size() && !isWord(from, u"FROM")) ++from;
  if (!isWord(0, u"SELECT") || isWord(1, u"DISTINCT") || from < 2 || from + 1 >= tokens.size()) {
    throw DataError(ErrorNumber::NotUpdatable);
  }
  std::size_t last = from + 1;  // last token of the table's name
  while (isPoint(last + 1) && last + 2 < tokens.size()) last += 2;
  const bool anyJoin = std::any_of(tokens.begin(), tokens.end(), [](const SqlToken& token) {
    return EqualsIgnoringCase(token.Text, u"UNION") || EqualsIgnoringCase(token.Text, u"GROUP");
  });
  const bool ends =
      last + 1 == tokens.size() || isWord(last + 1, u"WHERE") || isWord(last + 1, u"ORDER");
  if (tokens[last].KindOf != SqlToken::Kind::Word || !ends || anyJoin) {
    throw DataError(ErrorNumber::NotUpdatable);
  }
  const auto between = [&](const SqlToken& first, const SqlToken& end) {
    return StringView(
        first.Text.data(),
        static_cast<std::size_t>(end.Text.data() + end.Text.size() - first.Text.data()));
  };
  return {between(tokens[1], tokens[from - 1]), between(tokens[from + 1], tokens[last])};
}

/// Whether the column cannot be compared: SQL Server and Oracle reject comparisons of unlimited
/// texts.
bool IsIncomparable(const Column& column, Engine engine) {
  return column.Size == 0 && IsTextType(column.Type) &&
         (engine == Engine::SqlServer || engine == Engine::Oracle);
}

bool Contains(const std::vector<String>& texts, const String& text) {
  return std::find(texts.begin(), texts.end(), text) != texts.end();
}

/// Compares two keys that are decimal integers.
bool IsGreaterKey(StringView key, StringView than) {
  return key.size() != than.size() ? key.size() > than.size() : key > than;
}

/// The cells of the block's first row.
TableWriter::Cells CellsOf(const RowBlock& row) {
  TableWriter::Cells cells(row.Columns());
  for (std::size_t column = 0; column < cells.size(); ++column) {
    if (const auto text = row.Cell(0, column)) cells[column] = String(*text);
  }
  return cells;
}

}  // namespace

struct TableWriter::Condition {
  String Text;
  std::vector<Parameter> Parameters;
  std::vector<Variant> Values;

  void Add(const Condition& other) {
    Add(other.Text);
    Parameters.insert(Parameters.end(), other.Parameters.begin(), other.Parameters.end());
    Values.insert(Values.end(), other.Values.begin(), other.Values.end());
  }
  void Add(StringView test) { Text.append(Text.empty() ? u"" : u" AND ").append(test); }
  void Add(StringView test, Parameter parameter, Variant value) {
    Add(test);
    Parameters.push_back(std::move(parameter));
    Values.push_back(std::move(value));
  }
};

TableWriter::TableWriter(Link& link, StringView query, const std::vector<Column>& columns)
    : link_(link), columns_(columns) {
  const Query parts = SingleTableQuery(query);
  selectList_ = parts.SelectList;
  table_ = parts.Table;
  std::vector<String> names = link.KeyColumns(table_);
  if (names.empty()) names = {u"ID"};  // the key of all tables of the address book that have one
  for (const String& name : names) {
    const auto column = std::find_if(columns_.begin(), columns_.end(), [&](const Column& each) {
      return EqualsIgnoringCase(each.Name, name);
    });
    if (column == columns_.end()) throw DataError(ErrorNumber::NotUpdatable);
    // A driver that searches all schemas may list a column once per schema.
    const auto index = static_cast<std::size_t>(column - columns_.begin());
    if (std::find(key_.begin(), key_.end(), index) == key_.end()) key_.push_back(index);
  }
}

void TableWriter::AddKeyCondition(Condition& condition, std::size_t column,
                                  const Cells& cells) const {
  const Column& of = columns_[column];
  if (!cells[column]) throw DataError(ErrorNumber::RowChanged);
  condition.Add(of.Name + u" = ?", {of.Name, of.Type, of.Size}, CellValue(of.Type, *cells[column]));
}

void TableWriter::AddOldValueCondition(Condition& condition, std::size_t column,
                                       const Cells& cells) const {
  const Column& of = columns_[column];
  const Engine engine = link_.EngineKind();
  if (IsIncomparable(of, engine)) return;
  if (!cells[column]) {
    condition.Add(of.Name + u" IS NULL");
  } else if (engine == Engine::Sqlite) {
    // SQLite stores any type in any column, and its driver rounds fractions to 15 digits. So
    // compare with the text that was read.
    condition.Add(u"CAST(" + of.Name + u" AS TEXT) = ?", {of.Name, DataType::VarWChar, 0},
                  *cells[column]);
  } else {
    condition.Add(of.Name + u" = ?", {of.Name, of.Type, of.Size},
                  CellValue(of.Type, *cells[column]));
  }
}

TableWriter::Condition TableWriter::KeyCondition(const Cells& cells) const {
  Condition condition;
  for (const std::size_t column : key_) AddKeyCondition(condition, column, cells);
  return condition;
}

std::unique_ptr<Statement> TableWriter::Run(StringView text,
                                            const std::vector<Parameter>& parameters,
                                            const std::vector<Variant>& values) {
  auto statement = link_.Prepare(text, parameters);
  statement->Execute(values);
  return statement;
}

void TableWriter::Fill(Cells& cells, const Values& values) const {
  for (const auto& [column, value] : values) cells[column] = CellTextOf(value);
}

TableWriter::Condition TableWriter::ValueCondition(const Values& values) const {
  const Engine engine = link_.EngineKind();
  Condition condition;
  for (const auto& [index, value] : values) {
    const Column& of = columns_[index];
    const bool isText = IsTextType(of.Type);
    if (IsNull(value) || (engine == Engine::Oracle && isText && ToText(value).empty())) {
      condition.Add(of.Name + u" IS NULL");
    } else if (!IsIncomparable(of, engine)) {
      condition.Add(of.Name + u" = ?", {of.Name, of.Type, of.Size}, value);
    }
  }
  return condition;
}

bool TableWriter::Holds(const Cells& cells, const Values& values) const {
  return std::all_of(values.begin(), values.end(), [&](const auto& each) {
    // Engines may compare "Ann" and "ANN" as equal.
    const auto* text = std::get_if<String>(&each.second);
    if (!text) return true;
    return IsHeld(cells[each.first] ? StringView(*cells[each.first]) : StringView(), *text);
  });
}

std::vector<TableWriter::Cells> TableWriter::RowsWith(const Values& values) {
  const Condition condition = ValueCondition(values);
  if (condition.Text.empty()) return {};  // it would match every row
  const auto statement =
      Run(u"SELECT " + selectList_ + u" FROM " + table_ + u" WHERE " + condition.Text,
          condition.Parameters, condition.Values);
  std::vector<Cells> found;
  while (const auto row = statement->Fetch(1)) {
    Cells cells = CellsOf(*row);
    if (cells.size() == columns_.size() && Holds(cells, values)) found.push_back(std::move(cells));
  }
  return found;
}

std::optional<String> TableWriter::KeyOf(const Cells& cells) const {
  return key_.size() == 1 ? cells[key_[0]] : std::nullopt;
}

bool TableWriter::FindAdded(Cells& cells, Values values, const std::vector<String>& except,
                            const std::optional<String>& ofKey) {
  if (key_.size() != 1) throw DataError(ErrorNumber::NotUpdatable);
  const std::size_t key = key_[0];
  // An engine may give the key of a row that was undone to another one, so the values count too.
  if (ofKey) values[key] = CellValue(columns_[key].Type, *ofKey);
  const Cells* newest = nullptr;
  const std::vector<Cells> rows = RowsWith(values);
  for (const Cells& row : rows) {
    if (!row[key] || Contains(except, *row[key])) continue;
    if (!newest || IsGreaterKey(*row[key], *(*newest)[key])) newest = &row;
  }
  if (newest) cells = *newest;
  return newest != nullptr;
}

TableWriter::KeySource TableWriter::FindKeySource(const Values& values) {
  KeySource source;
  if (key_.size() != 1) return source;
  const auto given = values.find(key_[0]);
  source.Needed = given == values.end() || IsNull(given->second);
  if (!source.Needed) return source;
  source.Told = link_.TellsInsertedId(table_, columns_[key_[0]].Name);
  if (source.Told) return source;
  source.SameBefore.emplace();
  for (const Cells& row : RowsWith(values)) {
    source.SameBefore->push_back(row[key_[0]].value_or(u""));
  }
  return source;
}

String TableWriter::KeyFoundByValues(const Values& values, const std::vector<String>& except) {
  std::vector<String> keys;
  for (const Cells& row : RowsWith(values)) {
    const String key = row[key_[0]].value_or(String());
    if (!Contains(except, key)) keys.push_back(key);
  }
  if (keys.size() != 1) {
    // None: the engine stored other values. Several: another user has just inserted the same.
    throw Error(ErrorNumber::DriverFailure,
                u"The database does not tell the id that it gave to the new row");
  }
  return keys.front();
}

void TableWriter::Insert(Cells& cells, const Values& values, const KeySource& key) {
  String names;
  String marks;
  std::vector<Parameter> parameters;
  std::vector<Variant> arguments;
  for (const auto& [index, value] : values) {
    const Column& column = columns_[index];
    names += (names.empty() ? u"" : u", ") + column.Name;
    marks += marks.empty() ? u"?" : u", ?";
    parameters.push_back({column.Name, column.Type, column.Size});
    arguments.push_back(value);
  }
  const bool isMySql = link_.EngineKind() == Engine::MySql;
  const String content = !values.empty() ? u" (" + names + u") VALUES (" + marks + u")"
                         : isMySql       ? u" () VALUES ()"
                                         : u" DEFAULT VALUES";
  Run(u"INSERT INTO " + table_ + content, parameters, arguments);
  Fill(cells, values);
  if (!key.Needed) return;
  cells[key_[0]] = key.Told ? ToDecimal(link_.LastInsertedId(table_, columns_[key_[0]].Name))
                            : KeyFoundByValues(values, key.SameBefore.value());
}

TableWriter::Values TableWriter::ChangedOf(const Cells& cells, const Values& values) const {
  Values changed;
  for (const auto& [column, value] : values) {
    if (value != CellValue(columns_[column].Type, cells[column])) changed[column] = value;
  }
  return changed;
}

std::optional<bool> TableWriter::Change(const Values& values, const Condition& condition) {
  String assignments;
  std::vector<Parameter> parameters;
  std::vector<Variant> arguments;
  for (const auto& [index, value] : values) {
    const Column& column = columns_[index];
    assignments += (assignments.empty() ? u"" : u", ") + column.Name + u" = ?";
    parameters.push_back({column.Name, column.Type, column.Size});
    arguments.push_back(value);
  }
  parameters.insert(parameters.end(), condition.Parameters.begin(), condition.Parameters.end());
  arguments.insert(arguments.end(), condition.Values.begin(), condition.Values.end());
  const auto statement =
      Run(u"UPDATE " + table_ + u" SET " + assignments + u" WHERE " + condition.Text, parameters,
          arguments);
  const std::int64_t rows = ChangedRows(*statement, link_.EngineKind());
  return rows < 0 ? std::nullopt : std::optional(rows > 0);
}

bool TableWriter::HoldsNow(const Cells& cells, const Values& values) {
  Condition condition = KeyCondition(cells);
  const Condition held = ValueCondition(values);
  if (!held.Text.empty()) condition.Add(held);
  const auto row = Find(condition);
  return row && row->Columns() == cells.size() && Holds(CellsOf(*row), values);
}

void TableWriter::Update(Cells& cells, const Values& values) {
  Condition condition = KeyCondition(cells);
  for (const auto& [column, value] : values) {
    const bool isKey = std::find(key_.begin(), key_.end(), column) != key_.end();
    if (!isKey) AddOldValueCondition(condition, column, cells);
  }
  // Write only changed columns: some engines report an update without changes as no row found.
  const Values changed = ChangedOf(cells, values);
  bool isWritten = false;
  if (changed.empty()) {
    isWritten = Find(condition) != nullptr;
  } else if (const auto wasThere = Change(changed, condition)) {
    isWritten = *wasThere;
  } else {
    isWritten = HoldsNow(cells, changed);
  }
  if (!isWritten) {
    throw DataError(Find(KeyCondition(cells)) ? ErrorNumber::RowChanged : ErrorNumber::RowGone);
  }
  Fill(cells, changed);
}

std::unique_ptr<RowBlock> TableWriter::Find(const Condition& condition) {
  const auto statement =
      Run(u"SELECT " + selectList_ + u" FROM " + table_ + u" WHERE " + condition.Text,
          condition.Parameters, condition.Values);
  return statement->Fetch(1);
}

void TableWriter::Read(Cells& cells) {
  const auto row = Find(KeyCondition(cells));
  if (!row || row->Columns() != cells.size()) throw DataError(ErrorNumber::RowGone);
  cells = CellsOf(*row);
}

}  // namespace ktrv::database
