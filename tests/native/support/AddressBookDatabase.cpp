#include "tests/native/support/AddressBookDatabase.h"

#include <cstdlib>
#include <stdexcept>

#include "database/Recordset.h"
#include "tests/native/support/SchemaScript.h"

namespace ktrv::tests {
namespace {

std::string EngineOfTest() {
  const char* engine = std::getenv("KTRV_TEST_ENGINE");
  return engine ? engine : "sqlite";
}

}  // namespace

AddressBookDatabase::AddressBookDatabase() {
  const std::string engine = EngineOfTest();
  std::string schema = engine;
  if (engine == "sqlite") {
    file_ = std::make_unique<SqliteFile>();
  } else if (engine == "mariadb") {
    server_ = std::make_unique<ServerDatabase>(ServerKind::MariaDb);
    schema = "mysql";
  } else if (engine == "postgresql") {
    server_ = std::make_unique<ServerDatabase>(ServerKind::PostgreSql);
  } else {
    throw std::runtime_error("KTRV_TEST_ENGINE names no engine: " + engine);
  }
  RunScript(schema + ".sql");
  RunScript(schema + "-host.sql");
}

String AddressBookDatabase::ConnectionString() const {
  return server_ ? server_->ConnectionString() : file_->ConnectionString();
}

database::Environment AddressBookDatabase::Surroundings() {
  return {[this](StringView) -> database::Driver& { return driver_; }, [](const auto&) {}};
}

void AddressBookDatabase::RunScript(std::string_view name) {
  database::Connection connection(Surroundings());
  connection.Open(ConnectionString());
  RunSchemaScript(connection, name);
}

void AddressBookDatabase::Run(std::initializer_list<StringView> statements) {
  database::Connection connection(Surroundings());
  connection.Open(ConnectionString());
  for (const StringView statement : statements) connection.Execute(statement);
  if (IsOn(ServerKind::PostgreSql)) CountOn();
}

void AddressBookDatabase::CountOn() {
  // PostgreSQL does not notice ids that a statement names. Tests name some and expect the next to
  // be assigned, as on the other engines.
  database::Connection connection(Surroundings());
  connection.Open(ConnectionString());
  for (const StringView name : {u"SMS_ABFOLDERS", u"SMS_ABCONTACTS", u"SMS_ABGROUPS"}) {
    const String table(name);
    database::Recordset counted(connection.Surroundings());
    counted.Open(u"SELECT SETVAL('" + table +
                     u"_ID_SEQ', HIGHEST) FROM (SELECT MAX(ID) AS HIGHEST "
                     u"FROM " +
                     table + u") T WHERE HIGHEST >= (SELECT LAST_VALUE FROM " + table + u"_ID_SEQ)",
                 connection);
  }
}

std::vector<String> AddressBookDatabase::Rows(StringView query) {
  database::Recordset rows(Surroundings());
  rows.Open(query, ConnectionString());
  std::vector<String> lines;
  for (std::int64_t row = 0; row < rows.RecordCount(); ++row) {
    String line;
    for (std::size_t column = 0; column < rows.Columns().size(); ++column) {
      if (column > 0) line += u'|';
      line += rows.CellText(row, column).value_or(u"null");
    }
    lines.push_back(std::move(line));
  }
  return lines;
}

StringView AddressBookDatabase::OrderOfWriting() const {
  return IsOn(ServerKind::MariaDb) ? u"ROW_ID" : IsOn(ServerKind::PostgreSql) ? u"CTID" : u"ROWID";
}

}  // namespace ktrv::tests
