#include "database/odbc/OdbcLink.h"

#include "common/Error.h"
#include "database/DialectRewriter.h"
#include "database/Engines.h"
#include "database/KeyOfOneTable.h"
#include "database/odbc/ConnectionString.h"
#include "database/odbc/OdbcStatement.h"

namespace ktrv::database::odbc {
namespace {

/// Each link has an environment of its own, because a shared one is not safe with every driver
/// manager: Wine's after 8.0 replaces the environment of its driver with each new connection, even
/// while another thread is about to connect in it.
EnvironmentHandle NewEnvironment() {
  SQLHANDLE raw = nullptr;
  if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &raw))) {
    throw Error(ErrorNumber::DriverFailure, u"ODBC is not available on this machine", u"ODBC");
  }
  EnvironmentHandle environment(raw);
  Checked(SQLSetEnvAttr(raw, SQL_ATTR_ODBC_VERSION, Number(SQL_OV_ODBC3), 0), SQL_HANDLE_ENV, raw,
          {});
  return environment;
}

ConnectionHandle NewConnection(SQLHANDLE environment) {
  SQLHANDLE raw = nullptr;
  Checked(SQLAllocHandle(SQL_HANDLE_DBC, environment, &raw), SQL_HANDLE_ENV, environment, {});
  return ConnectionHandle(raw);
}

/// The text of a column in the fetched row, at most 255 units; empty for null.
String ShortText(const StatementHandle& statement, SQLUSMALLINT column) {
  char16_t text[256] = {};
  SQLLEN length = 0;
  const SQLRETURN result =
      SQLGetData(statement.Get(), column, SQL_C_WCHAR, text, sizeof text, &length);
  return SQL_SUCCEEDED(result) && length != SQL_NULL_DATA ? String(text) : String();
}

}  // namespace

OdbcLink::OdbcLink(StringView connectionString, StringView user, StringView password)
    : environment_(NewEnvironment()), connection_(NewConnection(environment_.Get())) {
  const String complete = CompleteConnectionString(connectionString, user, password);
  // A Unix path means a Unix driver under Wine, whose connection string is UTF-8.
  const bool utf8 = KeywordValue(complete, u"Database").substr(0, 1) == u"/";
  // The caller enforces the limit. With this a driver that supports it also ends its attempt.
  SQLSetConnectAttr(connection_.Get(), SQL_ATTR_LOGIN_TIMEOUT,
                    Number(static_cast<SQLULEN>(LongestForEachServer(complete).count())),
                    SQL_IS_UINTEGER);
  statementLimit_ = TimeLimitsOf(complete).Statement;
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
  // SQLDisconnect fails while a transaction is open.
  if (!SQL_SUCCEEDED(SQLDisconnect(connection_.Get()))) {
    SQLEndTran(SQL_HANDLE_DBC, connection_.Get(), SQL_ROLLBACK);
    SQLDisconnect(connection_.Get());
  }
}

void OdbcLink::LearnAboutDriver() {
  const String driver = Information(SQL_DRIVER_NAME);
  if (!driver.empty()) dialogue_.Source = driver;
  engine_ = EngineOf(Information(SQL_DBMS_NAME));
  // Only the Windows build of SQLite's driver has wide functions. The other build would truncate
  // each UTF-16 unit to a byte.
  dialogue_.Utf8 = engine_ == Engine::Sqlite && driver.find(u".dll") == String::npos;
  SQLUSMALLINT furtherResults = SQL_FALSE;
  SQLGetFunctions(connection_.Get(), SQL_API_SQLMORERESULTS, &furtherResults);
  hasFurtherResults_ = furtherResults == SQL_TRUE;
  SQLUSMALLINT transactions = SQL_TC_NONE;
  SQLGetInfo(connection_.Get(), SQL_TXN_CAPABLE, &transactions, sizeof transactions, nullptr);
  hasTransactions_ = transactions != SQL_TC_NONE;
  SQLUINTEGER extensions = 0;
  SQLGetInfo(connection_.Get(), SQL_GETDATA_EXTENSIONS, &extensions, sizeof extensions, nullptr);
  constexpr SQLUINTEGER kNeeded = SQL_GD_ANY_COLUMN | SQL_GD_ANY_ORDER | SQL_GD_BOUND;
  // MySQL's driver claims support, but returns wrong lengths for long texts with surrogate pairs.
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

std::chrono::seconds OdbcLink::StatementLimit() const {
  switch (engine_) {
    case Engine::SqlServer:
    case Engine::Oracle:
    case Engine::Other:
      return std::chrono::ceil<std::chrono::seconds>(statementLimit_);
    case Engine::PostgreSql:  // would need a round trip for each change
    case Engine::MySql:       // does not support it
    case Engine::Sqlite:
      break;
  }
  return std::chrono::seconds(0);
}

std::unique_ptr<Statement> OdbcLink::Prepare(StringView text,
                                             std::span<const Parameter> parameters) {
  return std::make_unique<OdbcStatement>(*this, RewriteForEngine(text, engine_), parameters);
}

std::vector<String> OdbcLink::KeyColumns(StringView table) {
  auto known = keyColumns_.find(String(table));
  if (known == keyColumns_.end()) {
    known = keyColumns_.emplace(table, AskKeyColumns(table)).first;
  }
  return known->second;
}

std::vector<String> OdbcLink::AskKeyColumns(StringView table) const {
  const String name = NameInCatalogue(table, engine_);
  const StatementHandle statement = NewStatement();
  const std::string bytes = ToUtf8(name);
  // Newer versions of Wine find no key with the wide function.
  const bool narrow = dialogue_.Utf8 || FitsCodePage(name);
  const SQLRETURN result =
      narrow ? SQLPrimaryKeys(statement.Get(), nullptr, 0, nullptr, 0, Narrow(bytes), SQL_NTS)
             : SQLPrimaryKeysW(statement.Get(), nullptr, 0, nullptr, 0, Wide(name), SQL_NTS);
  if (!SQL_SUCCEEDED(result)) return {};  // not supported by the driver
  constexpr SQLUSMALLINT kCatalog = 1;
  constexpr SQLUSMALLINT kSchema = 2;
  constexpr SQLUSMALLINT kColumnName = 4;
  std::vector<KeyLine> lines;
  while (SQL_SUCCEEDED(SQLFetch(statement.Get()))) {
    KeyLine line;
    line.Catalog = ShortText(statement, kCatalog);
    line.Schema = ShortText(statement, kSchema);
    line.Column = ShortText(statement, kColumnName);
    if (!line.Column.empty()) lines.push_back(std::move(line));
  }
  return KeyOfOneTable(lines, table);
}

bool OdbcLink::TellsInsertedId(StringView table, StringView column) {
  return CanReadLastInsertedId(*this, table, column);
}

std::int64_t OdbcLink::LastInsertedId(StringView table, StringView column) {
  return ReadLastInsertedId(*this, table, column, dialogue_.Source);
}

void OdbcLink::CommitEachStatement(bool each) {
  const SQLULEN mode = each ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF;
  Checked(SQLSetConnectAttr(connection_.Get(), SQL_ATTR_AUTOCOMMIT, Number(mode), SQL_IS_UINTEGER),
          SQL_HANDLE_DBC, connection_.Get(), dialogue_);
}

void OdbcLink::Run(StringView text) {
  OdbcStatement(*this, String(text), {}).Execute({});
}

bool OdbcLink::Begin() {
  if (!hasTransactions_) return false;
  if (engine_ == Engine::Sqlite) {
    // The driver would start a deferred transaction. That fails without waiting if it wants to
    // write while another connection writes.
    Run(u"BEGIN IMMEDIATE");
  } else {
    CommitEachStatement(false);
  }
  return true;
}

void OdbcLink::Commit() {
  if (engine_ == Engine::Sqlite) return Run(u"COMMIT");
  Checked(SQLEndTran(SQL_HANDLE_DBC, connection_.Get(), SQL_COMMIT), SQL_HANDLE_DBC,
          connection_.Get(), dialogue_);
  CommitEachStatement(true);
}

void OdbcLink::RollBack() {
  if (engine_ == Engine::Sqlite) return Run(u"ROLLBACK");
  // Roll back first: switching autocommit on would commit.
  Checked(SQLEndTran(SQL_HANDLE_DBC, connection_.Get(), SQL_ROLLBACK), SQL_HANDLE_DBC,
          connection_.Get(), dialogue_);
  CommitEachStatement(true);
}

bool OdbcLink::SetMark() {
  const StringView statement = MarkStatement(engine_);
  if (!statement.empty()) Run(statement);
  return !statement.empty();
}

void OdbcLink::RollBackToMark() {
  Run(UndoToMarkStatement(engine_));
}

}  // namespace ktrv::database::odbc
