#include "database/Engines.h"

#include "common/Error.h"
#include "database/Conversion.h"

namespace ktrv::database {
namespace {

constexpr StringView kQuestion = u"SELECT 1";
constexpr StringView kQuestionOfOracle = u"SELECT 1 FROM DUAL";

/// Converts A to Z to lower case, as PostgreSQL does with unquoted names.
String InSmallLetters(StringView text) {
  String name(text);
  for (char16_t& unit : name) {
    if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit + (u'a' - u'A'));
  }
  return name;
}

/// The name as an SQL text literal.
String Quoted(StringView name) {
  String text = u"'";
  for (const char16_t unit : name) text.append(unit == u'\'' ? 2 : 1, unit);
  return text + u"'";
}

/// The expression for the column's sequence on PostgreSQL. lastval() is not used, because a trigger
/// may have used another sequence.
String SequenceOfPostgreSql(StringView table, StringView column) {
  return u"pg_get_serial_sequence(" + Quoted(table) + u", " + Quoted(InSmallLetters(column)) + u")";
}

/// A query that returns a row if the engine can report new ids of the column; empty if the engine
/// needs no such query or has none.
String TellsIdQuery(Engine engine, StringView table, StringView column) {
  switch (engine) {
    case Engine::MySql: {
      const std::size_t point = table.rfind(u'.');
      const String schema =
          point == StringView::npos ? u"DATABASE()" : Quoted(table.substr(0, point));
      return u"SELECT 1 FROM INFORMATION_SCHEMA.COLUMNS WHERE TABLE_SCHEMA = " + schema +
             u" AND TABLE_NAME = " + Quoted(table.substr(point + 1)) + u" AND COLUMN_NAME = " +
             Quoted(column) + u" AND EXTRA LIKE '%auto_increment%'";
    }
    case Engine::SqlServer:
      return u"SELECT 1 WHERE COLUMNPROPERTY(OBJECT_ID(" + Quoted(table) + u"), " + Quoted(column) +
             u", 'IsIdentity') = 1";
    case Engine::PostgreSql:
      // Users without rights on the sequence of an identity column may still insert rows.
      return u"SELECT 1 WHERE has_sequence_privilege(" + SequenceOfPostgreSql(table, column) +
             u", 'USAGE, SELECT')";
    case Engine::Oracle:  // uses SequenceOfOracle
    case Engine::Sqlite:  // always supported
    case Engine::Other:
      break;
  }
  return {};
}

/// The sequence of an identity column on Oracle, in the user's own schema; empty if there is none.
String SequenceOfOracle(Link& link, StringView table, StringView column) {
  const std::vector<Parameter> parameters = {{u"TABLE_NAME", DataType::VarWChar, 128},
                                             {u"COLUMN_NAME", DataType::VarWChar, 128}};
  const auto statement = link.Prepare(
      u"SELECT SEQUENCE_NAME FROM USER_TAB_IDENTITY_COLS WHERE TABLE_NAME = ? AND COLUMN_NAME = ?",
      parameters);
  statement->Execute(std::vector<Variant>{ToUpperAscii(table), ToUpperAscii(column)});
  const auto row = statement->Fetch(1);
  return row && row->Cell(0, 0) ? String(*row->Cell(0, 0)) : String();
}

/// The query for the id of this session's last insert into the table; empty if there is none.
String LastIdQuery(Link& link, StringView table, StringView column) {
  switch (link.EngineKind()) {
    case Engine::Sqlite:
      // The column's value, which may differ from SQLite's rowid.
      return u"SELECT " + String(column) + u" FROM " + String(table) +
             u" WHERE rowid = last_insert_rowid()";
    case Engine::MySql:
      return u"SELECT LAST_INSERT_ID()";
    case Engine::SqlServer:
      // SCOPE_IDENTITY() would be null, because each statement is a scope of its own.
      return u"SELECT @@IDENTITY";
    case Engine::PostgreSql:
      return u"SELECT currval(" + SequenceOfPostgreSql(table, column) + u")";
    case Engine::Oracle: {
      const String sequence = SequenceOfOracle(link, table, column);
      return sequence.empty() ? String() : u"SELECT \"" + sequence + u"\".CURRVAL FROM DUAL";
    }
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

StringView MarkStatement(Engine engine) {
  switch (engine) {
    case Engine::MySql:
    case Engine::PostgreSql:
    case Engine::Oracle:
    case Engine::Sqlite:
      return u"SAVEPOINT KTRV_MARK";
    case Engine::SqlServer:
      return u"SAVE TRANSACTION KTRV_MARK";
    case Engine::Other:
      break;
  }
  return {};
}

StringView UndoToMarkStatement(Engine engine) {
  return engine == Engine::SqlServer ? u"ROLLBACK TRANSACTION KTRV_MARK"
                                     : u"ROLLBACK TO SAVEPOINT KTRV_MARK";
}

std::int64_t ChangedRows(const Statement& statement, Engine engine) {
  const std::int64_t rows = statement.RowsAffected();
  // With NOCOUNT ON, drivers of SQL Server tell -1 or zero.
  return rows == 0 && engine == Engine::SqlServer ? -1 : rows;
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
        link.Prepare(engine == Engine::Oracle ? kQuestionOfOracle : kQuestion, {});
    statement->Execute({});
    return statement->Fetch(1) != nullptr;
  } catch (const Error&) {
    return false;
  }
}

bool IsQuestion(StringView text) {
  return text == kQuestion || text == kQuestionOfOracle;
}

bool CanReadLastInsertedId(Link& link, StringView table, StringView column) {
  if (link.EngineKind() == Engine::Sqlite) return true;
  if (link.EngineKind() == Engine::Oracle) return !SequenceOfOracle(link, table, column).empty();
  const String query = TellsIdQuery(link.EngineKind(), table, column);
  if (query.empty()) return false;
  const auto statement = link.Prepare(query, {});
  statement->Execute({});
  return statement->Fetch(1) != nullptr;
}

std::int64_t ReadLastInsertedId(Link& link, StringView table, StringView column,
                                StringView source) {
  const String query = LastIdQuery(link, table, column);
  if (!query.empty()) {
    const auto statement = link.Prepare(query, {});
    statement->Execute({});
    const auto row = statement->Fetch(1);
    if (row && row->Cell(0, 0)) {
      try {
        // Some drivers return the number as a fraction.
        return ToInteger(CellValue(statement->Columns().front().Type, row->Cell(0, 0)));
      } catch (const Error&) {
        // Not a valid id.
      }
    }
  }
  throw Error(ErrorNumber::DriverFailure,
              u"The database does not tell the id that it gave to the new row", String(source));
}

}  // namespace ktrv::database
