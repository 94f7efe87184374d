#include "tool/StructureCheck.h"

#include <algorithm>
#include <array>
#include <optional>

#include "common/Error.h"
#include "data/ToolQueries.h"
#include "database/Engines.h"
#include "tool/Query.h"
#include "tool/Schema.h"

namespace ktrv::tool {
namespace {

namespace Queries = data::ToolQueries;
using database::Engine;

constexpr std::array<Queries::IndexedColumn, 5> kIndexed = {
    {{u"SMS_ABCONTACTS", u"FOLDER_ID", u"IX_SMS_ABCONTACTS_FOLDER"},
     {u"SMS_ABGROUPS", u"FOLDER_ID", u"IX_SMS_ABGROUPS_FOLDER"},
     {u"SMS_ABGROUPS", u"NAME", u"IX_SMS_ABGROUPS_NAME"},
     {u"SMS_ABGROUPMAPS", u"GROUP_ID", u"IX_SMS_ABGROUPMAPS_GROUP"},
     {u"SMS_ABGROUPMAPS", u"CONTACT_ID", u"IX_SMS_ABGROUPMAPS_CONTACT"}}};

Engine EngineOf(database::Connection& connection) {
  return connection.CurrentLink()->Get().EngineKind();
}

/// The table's columns in upper case; nullopt if it cannot be read.
std::optional<std::set<String>> ColumnsOf(StringView table, database::Connection& connection) {
  try {
    const Query query(connection, Queries::NoRows(table));
    std::set<String> names;
    for (const auto& column : query.Columns()) names.insert(ToUpperAscii(column.Name));
    return names;
  } catch (const Error&) {
    return std::nullopt;
  }
}

bool IsOwn(StringView table) {
  return std::find(Queries::kOwnTables.begin(), Queries::kOwnTables.end(), table) !=
         Queries::kOwnTables.end();
}

/// The query that counts what makes it unsafe to create the table; empty for an unknown engine.
String ObstacleQuery(StringView table, Engine engine) {
  switch (engine) {
    case Engine::Sqlite:
      return Queries::ObstaclesOnSqlite(table);
    case Engine::MySql:
      return Queries::ObstaclesOnMySql(table);
    case Engine::PostgreSql:
      return Queries::ObstaclesOnPostgreSql(table);
    case Engine::SqlServer:
      return Queries::ObstaclesOnSqlServer(table);
    case Engine::Oracle:
      return Queries::ObstaclesOnOracle(table);
    case Engine::Other:
      break;
  }
  return {};
}

/// Whether the table is not there, rather than locked, forbidden or in another schema: an empty one
/// in its place would make all rows that refer to it look wrong.
bool CanBeCreated(StringView table, database::Connection& connection) {
  const String query = ObstacleQuery(table, EngineOf(connection));
  return IsOwn(table) && !query.empty() && CountOf(connection, query) == 0;
}

Finding MissingTable(StringView table, database::Connection& connection) {
  Finding finding{.Code = "missing-table",
                  .What = u"The table " + String(table) + u" is missing or cannot be read",
                  .Causes = u"Lists and editors that need it fail.",
                  .Count = 1};
  if (!CanBeCreated(table, connection)) return finding;
  finding.Repair = u"creates it, empty, with its indexes";
  finding.Mend = [table](database::Connection& on, Mended& mended) {
    RunSchema(StatementsOfTable(EngineOf(on), table), on);
    ++mended.Count;
  };
  return finding;
}

void CheckColumns(database::Connection& connection, Structure& structure) {
  Finding missing{.Code = "missing-column",
                  .What = u"Columns are missing",
                  .Causes = u"Lists and editors that need them fail."};
  for (const auto& [table, columns] : Queries::Columns()) {
    const auto present = ColumnsOf(table, connection);
    if (!present) {
      structure.Findings.push_back(MissingTable(table, connection));
      continue;
    }
    bool complete = true;
    for (const StringView column : columns) {
      if (present->contains(String(column))) continue;
      complete = false;
      missing.Add(String(table) + u"." + String(column));
    }
    if (complete) structure.Complete.insert(table);
  }
  if (missing.Count > 0) structure.Findings.push_back(std::move(missing));
}

StringView IndexQuery(Engine engine) {
  switch (engine) {
    case Engine::Sqlite:
      return Queries::kIndexesOfSqlite;
    case Engine::MySql:
      return Queries::kIndexesOfMySql;
    case Engine::PostgreSql:
      return Queries::kIndexesOfPostgreSql;
    case Engine::SqlServer:
      return Queries::kIndexesOfSqlServer;
    case Engine::Oracle:
      return Queries::kIndexesOfOracle;
    case Engine::Other:
      break;
  }
  return {};
}

void CheckIndexes(database::Connection& connection, Structure& structure) {
  const StringView text = IndexQuery(EngineOf(connection));
  if (text.empty()) return;
  std::set<std::pair<String, String>> present;  // table and first column
  Query query(connection, text);
  while (query.Next()) {
    present.emplace(ToUpperAscii(query.Text(0)), ToUpperAscii(query.Text(1)));
  }
  for (const auto& index : kIndexed) {
    if (!structure.Has(index.Table)) continue;
    if (present.contains({String(index.Table), String(index.Column)})) continue;
    structure.Findings.push_back(
        {.Code = "missing-index",
         .What = u"No index begins with " + String(index.Table) + u"." + String(index.Column),
         .Causes = u"Lists become slower with every row.",
         .Repair = u"creates " + String(index.Name),
         .Count = 1,
         .Mend = [&index](database::Connection& on, Mended& mended) {
           on.Execute(Queries::CreateIndex(index));
           ++mended.Count;
         }});
  }
}

void CheckIds(database::Connection& connection, Structure& structure) {
  Finding keyless{.Code = "missing-key",
                  .What = u"ID is not the primary key of a table",
                  .Causes = u"Ids may be there twice; changes may go to the wrong row."};
  Finding unreadable{
      .Code = "unusable-id",
      .What = u"The database does not tell the component the ids of new rows",
      .Causes =
          u"A new row is looked up by its values, which is slow and fails for twins. The "
          u"column needs to be an identity column of the engine."};
  database::Link& link = connection.CurrentLink()->Get();
  for (const StringView table : {u"SMS_ABFOLDERS", u"SMS_ABCONTACTS", u"SMS_ABGROUPS"}) {
    if (!structure.Has(table)) continue;
    const auto key = link.KeyColumns(table);
    if (key.size() != 1 || !EqualsIgnoringCase(key.front(), u"ID")) keyless.Add(String(table));
    if (!link.TellsInsertedId(table, u"ID")) unreadable.Add(String(table));
  }
  for (Finding* finding : {&keyless, &unreadable}) {
    if (finding->Count > 0) structure.Findings.push_back(std::move(*finding));
  }
}

}  // namespace

Structure CheckStructure(database::Connection& connection) {
  Structure structure;
  CheckColumns(connection, structure);
  CheckIndexes(connection, structure);
  CheckIds(connection, structure);
  return structure;
}

}  // namespace ktrv::tool
