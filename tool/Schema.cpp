#include "tool/Schema.h"

#include <string_view>

#include "common/Error.h"
#include "data/ToolQueries.h"
#include "tool/Query.h"
#include "tool/SchemaScripts.h"

namespace ktrv::tool {
namespace {

struct Scripts {
  std::string_view Own;
  std::string_view Host;
};

Scripts ScriptsOf(database::Engine engine) {
  using database::Engine;
  switch (engine) {
    case Engine::Sqlite:
      return {kSqliteScript, kSqliteHostScript};
    case Engine::MySql:
      return {kMysqlScript, kMysqlHostScript};
    case Engine::PostgreSql:
      return {kPostgresqlScript, kPostgresqlHostScript};
    case Engine::SqlServer:
      return {kSqlserverScript, kSqlserverHostScript};
    case Engine::Oracle:
      return {kOracleScript, kOracleHostScript};
    case Engine::Other:
      break;
  }
  throw Error(ErrorNumber::ActionNotSupported, u"There are no scripts for this database");
}

bool IsBlank(std::string_view text) {
  return text.find_first_not_of(" \r\n\t") == std::string_view::npos;
}

/// Splits a script at semicolons and at the lines GO and "/" of the engines' own programs. Comments
/// may contain semicolons; texts in quotation marks contain neither them nor "--".
std::vector<String> Split(std::string_view script) {
  std::vector<String> statements;
  std::string statement;
  const auto end = [&] {
    if (!IsBlank(statement)) statements.push_back(FromUtf8(statement));
    statement.clear();
  };
  while (!script.empty()) {
    const std::size_t length = std::min(script.find('\n'), script.size());
    std::string_view line = script.substr(0, length);
    script.remove_prefix(std::min(length + 1, script.size()));
    line = line.substr(0, line.find("--"));
    if (line == "GO" || line == "/") {
      end();
      continue;
    }
    for (std::size_t mark = line.find(';'); mark != std::string_view::npos; mark = line.find(';')) {
      statement += line.substr(0, mark);
      end();
      line.remove_prefix(mark + 1);
    }
    statement.append(line).append(1, '\n');
  }
  end();
  return statements;
}

/// Whether the statement creates an operator of PostgreSQL that is there; it has no text for that.
bool IsOperatorThere(StringView statement, database::Connection& connection) {
  if (statement.find(u"CREATE OPERATOR ") == StringView::npos) return false;
  const bool ofText = statement.find(u"LEFTARG = TEXT") != StringView::npos;
  return CountOf(connection, data::ToolQueries::SameIdOperators(ofText ? u"text" : u"int4")) > 0;
}

}  // namespace

std::vector<String> SchemaStatements(database::Engine engine) {
  return Split(ScriptsOf(engine).Own);
}

std::vector<String> StatementsOfTable(database::Engine engine, StringView table) {
  constexpr StringView kCreate = u"CREATE TABLE ";
  const String create = String(kCreate) + String(table) + u" ";
  std::vector<String> statements;
  bool isIn = false;
  for (String& statement : SchemaStatements(engine)) {
    if (statement.find(kCreate) != String::npos) isIn = statement.find(create) != String::npos;
    if (isIn) statements.push_back(std::move(statement));
  }
  return statements;
}

void RunSchema(const std::vector<String>& statements, database::Connection& connection) {
  for (const String& statement : statements) {
    if (!IsOperatorThere(statement, connection)) connection.Execute(statement);
  }
}

std::vector<String> HostSchemaStatements(database::Engine engine) {
  return Split(ScriptsOf(engine).Host);
}

}  // namespace ktrv::tool
