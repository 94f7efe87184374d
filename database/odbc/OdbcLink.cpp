#include "database/odbc/OdbcLink.h"

#include "common/Error.h"
#include "database/odbc/ConnectionString.h"
#include "database/odbc/DialectRewriter.h"
#include "database/odbc/OdbcStatement.h"

namespace ktrv::database::odbc {
namespace {

ConnectionHandle NewConnection(SQLHANDLE environment) {
  SQLHANDLE raw = nullptr;
  Checked(SQLAllocHandle(SQL_HANDLE_DBC, environment, &raw), SQL_HANDLE_ENV, environment, {});
  return ConnectionHandle(raw);
}

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

OdbcLink::OdbcLink(SQLHANDLE environment, StringView connectionString, StringView user,
                   StringView password)
    : connection_(NewConnection(environment)) {
  const String complete = CompleteConnectionString(connectionString, user, password);
  // A path of this form is for a driver of the other system, which takes bytes.
  const bool utf8 = KeywordValue(complete, u"Database").substr(0, 1) == u"/";
  SQLRETURN result = SQL_ERROR;
  if (utf8) {
    const std::string bytes = ToUtf8(complete);
    result = SQLDriverConnect(connection_.Get(), nullptr, Narrow(bytes),
                              static_cast<SQLSMALLINT>(bytes.size()), nullptr, 0, nullptr,
                              SQL_DRIVER_NOPROMPT);
  } else {
    result = SQLDriverConnectW(connection_.Get(), nullptr, Wide(complete),
                               static_cast<SQLSMALLINT>(complete.size()), nullptr, 0, nullptr,
                               SQL_DRIVER_NOPROMPT);
  }
  dialogue_.Utf8 = utf8;
  Checked(result, SQL_HANDLE_DBC, connection_.Get(), dialogue_);
  LearnAboutDriver();
}

OdbcLink::~OdbcLink() {
  SQLDisconnect(connection_.Get());
}

void OdbcLink::LearnAboutDriver() {
  const String driver = Information(SQL_DRIVER_NAME);
  if (!driver.empty()) dialogue_.Source = driver;
  engine_ = EngineOf(Information(SQL_DBMS_NAME));
  // Only the build of SQLite's driver for Windows has the wide functions. The other one cuts each
  // UTF-16 unit to a byte when it is called by them.
  dialogue_.Utf8 = engine_ == Engine::Sqlite && driver.find(u".dll") == String::npos;
  SQLUINTEGER extensions = 0;
  SQLGetInfo(connection_.Get(), SQL_GETDATA_EXTENSIONS, &extensions, sizeof extensions, nullptr);
  constexpr SQLUINTEGER kNeeded = SQL_GD_ANY_COLUMN | SQL_GD_ANY_ORDER | SQL_GD_BOUND;
  // MySQL's driver says that it can, but gives wrong lengths for long texts beyond the first plane.
  canReadAgain_ = (extensions & kNeeded) == kNeeded && engine_ != Engine::MySql;
}

String OdbcLink::Information(SQLUSMALLINT kind) const {
  char16_t text[256] = {};
  SQLSMALLINT bytes = 0;
  const SQLRETURN result = SQLGetInfoW(connection_.Get(), kind, text, sizeof text, &bytes);
  return SQL_SUCCEEDED(result) ? String(text) : String();
}

StatementHandle OdbcLink::NewStatement() const {
  SQLHANDLE raw = nullptr;
  Checked(SQLAllocHandle(SQL_HANDLE_STMT, connection_.Get(), &raw), SQL_HANDLE_DBC,
          connection_.Get(), dialogue_);
  return StatementHandle(raw);
}

std::unique_ptr<Statement> OdbcLink::Prepare(StringView text,
                                             std::span<const Parameter> parameters) {
  return std::make_unique<OdbcStatement>(*this, RewriteForEngine(text, engine_), parameters);
}

std::vector<String> OdbcLink::KeyColumns(StringView table) {
  String name(table.substr(table.rfind(u'.') + 1));
  if (engine_ == Engine::PostgreSql) {
    for (char16_t& unit : name) {  // it keeps unquoted names in small letters
      if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit + (u'a' - u'A'));
    }
  }
  const StatementHandle statement = NewStatement();
  const std::string bytes = ToUtf8(name);
  const SQLRETURN result =
      dialogue_.Utf8
          ? SQLPrimaryKeys(statement.Get(), nullptr, 0, nullptr, 0, Narrow(bytes), SQL_NTS)
          : SQLPrimaryKeysW(statement.Get(), nullptr, 0, nullptr, 0, Wide(name), SQL_NTS);
  std::vector<String> names;
  if (!SQL_SUCCEEDED(result)) return names;  // the driver cannot tell
  constexpr SQLUSMALLINT kColumnName = 4;
  while (SQL_SUCCEEDED(SQLFetch(statement.Get()))) {
    char16_t column[256] = {};
    SQLLEN length = 0;
    if (SQL_SUCCEEDED(SQLGetData(statement.Get(), kColumnName, SQL_C_WCHAR, column, sizeof column,
                                 &length))) {
      names.emplace_back(column);
    }
  }
  return names;
}

std::int64_t OdbcLink::LastInsertedId(StringView table, StringView column) {
  String query = LastIdQuery(engine_);
  if (engine_ == Engine::Oracle) {
    // The sequence behind an identity column.
    const std::vector<Parameter> parameters = {{u"TABLE_NAME", DataType::VarWChar, 128},
                                               {u"COLUMN_NAME", DataType::VarWChar, 128}};
    const auto statement = Prepare(
        u"SELECT SEQUENCE_NAME FROM USER_TAB_IDENTITY_COLS WHERE TABLE_NAME = ? AND COLUMN_NAME = "
        u"?",
        parameters);
    statement->Execute(std::vector<Variant>{ToUpperAscii(table), ToUpperAscii(column)});
    if (const auto row = statement->Fetch(1); row && row->Cell(0, 0)) {
      query = u"SELECT \"" + String(*row->Cell(0, 0)) + u"\".CURRVAL FROM DUAL";
    }
  }
  if (!query.empty()) {
    const auto statement = Prepare(query, {});
    statement->Execute({});
    const auto row = statement->Fetch(1);
    if (row && row->Cell(0, 0)) {
      if (const auto id = ParseInteger(*row->Cell(0, 0))) return *id;
    }
  }
  throw Error(ErrorNumber::DriverFailure,
              u"The database does not tell the id that it gave to the new row", dialogue_.Source);
}

}  // namespace ktrv::database::odbc
