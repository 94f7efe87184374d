#include "database/Engines.h"

#include "common/Error.h"

namespace ktrv::database {
namespace {

/// The statement that tells the id that this session's last insert was given; empty when there is
/// no such statement.
String LastIdQuery(Engine engine) {
  switch (engine) {
    case Engine::Sqlite:
      return u"SELECT last_insert_rowid()";
    case Engine::MySql:
      return u"SELECT LAST_INSERT_ID()";
    case Engine::PostgreSql:
      return u"SELECT lastval()";
    case Engine::SqlServer:
      // SCOPE_IDENTITY would be empty: each statement of a session is a scope of its own.
      return u"SELECT @@IDENTITY";
    case Engine::Oracle:
    case Engine::Other:
      break;
  }
  return {};
}

}  // namespace

Engine EngineOf(StringView product) {
  const String name = ToUpperAscii(product);
  const auto contains = [&](StringView part) { return name.find(part) != StringView::npos; };
  if (contains(u"SQLITE")) return Engine::Sqlite;
  if (contains(u"MYSQL") || contains(u"MARIADB")) return Engine::MySql;
  if (contains(u"POSTGRES")) return Engine::PostgreSql;
  if (contains(u"ORACLE")) return Engine::Oracle;
  if (contains(u"SQL SERVER")) return Engine::SqlServer;
  return Engine::Other;
}

std::int64_t ReadLastInsertedId(Link& link, StringView table, StringView column,
                                StringView source) {
  String query = LastIdQuery(link.EngineKind());
  if (link.EngineKind() == Engine::Oracle) {
    // The sequence behind an identity column.
    const std::vector<Parameter> parameters = {{u"TABLE_NAME", DataType::VarWChar, 128},
                                               {u"COLUMN_NAME", DataType::VarWChar, 128}};
    const auto statement = link.Prepare(
        u"SELECT SEQUENCE_NAME FROM USER_TAB_IDENTITY_COLS WHERE TABLE_NAME = ? AND COLUMN_NAME = "
        u"?",
        parameters);
    statement->Execute(std::vector<Variant>{ToUpperAscii(table), ToUpperAscii(column)});
    if (const auto row = statement->Fetch(1); row && row->Cell(0, 0)) {
      query = u"SELECT \"" + String(*row->Cell(0, 0)) + u"\".CURRVAL FROM DUAL";
    }
  }
  if (!query.empty()) {
    const auto statement = link.Prepare(query, {});
    statement->Execute({});
    const auto row = statement->Fetch(1);
    if (row && row->Cell(0, 0)) {
      if (const auto id = ParseInteger(*row->Cell(0, 0))) return *id;
    }
  }
  throw Error(ErrorNumber::DriverFailure,
              u"The database does not tell the id that it gave to the new row", String(source));
}

}  // namespace ktrv::database
