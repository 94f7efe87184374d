#include "database/Engines.h"

#include "common/Error.h"
#include "database/Conversion.h"

namespace ktrv::database {
namespace {

/// As PostgreSQL keeps names without quotes: in small letters.
String InSmallLetters(StringView text) {
  String name(text);
  for (char16_t& unit : name) {
    if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit + (u'a' - u'A'));
  }
  return name;
}

/// The statement that tells the id that this session's last insert was given; empty when there is
/// no such statement.
String LastIdQuery(Engine engine) {
  switch (engine) {
    case Engine::Sqlite:
      return u"SELECT last_insert_rowid()";
    case Engine::MySql:
      return u"SELECT LAST_INSERT_ID()";
    case Engine::SqlServer:
      // SCOPE_IDENTITY would be empty: each statement of a session is a scope of its own.
      return u"SELECT @@IDENTITY";
    case Engine::PostgreSql:  // by their sequences
    case Engine::Oracle:
    case Engine::Other:
      break;
  }
  return {};
}

/// The same on PostgreSQL, by the column's own sequence: the last one of the session may be
/// another, which a trigger used.
String LastIdQueryOfPostgreSql(StringView table, StringView column) {
  return u"SELECT currval(pg_get_serial_sequence('" + String(table) + u"', '" +
         InSmallLetters(column) + u"'))";
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

String NameInCatalogue(StringView table, Engine engine) {
  const StringView name = table.substr(table.rfind(u'.') + 1);
  return engine == Engine::PostgreSql ? InSmallLetters(name) : String(name);
}

bool Answers(Link& link) {
  const Engine engine = link.EngineKind();
  if (engine == Engine::Sqlite || engine == Engine::Other) return true;
  try {
    const auto statement =
        link.Prepare(engine == Engine::Oracle ? u"SELECT 1 FROM DUAL" : u"SELECT 1", {});
    statement->Execute({});
    return statement->Fetch(1) != nullptr;
  } catch (const Error&) {
    return false;
  }
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
  if (link.EngineKind() == Engine::PostgreSql) query = LastIdQueryOfPostgreSql(table, column);
  if (!query.empty()) {
    const auto statement = link.Prepare(query, {});
    statement->Execute({});
    const auto row = statement->Fetch(1);
    if (row && row->Cell(0, 0)) {
      try {
        // Some drivers give the number as a fraction.
        return ToInteger(CellValue(statement->Columns().front().Type, row->Cell(0, 0)));
      } catch (const Error&) {
        // What it tells is no id.
      }
    }
  }
  throw Error(ErrorNumber::DriverFailure,
              u"The database does not tell the id that it gave to the new row", String(source));
}

}  // namespace ktrv::database
