#include "tests/native/support/AddressBookDatabase.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

#include "database/Recordset.h"

namespace ktrv::tests {
namespace {

/// The script without its comments, which may hold semicolons.
std::string ReadScript(const std::filesystem::path& path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error("cannot read " + path.string());
  std::string script;
  for (std::string line; std::getline(file, line);) {
    script += line.substr(0, line.find("--")) + "\n";
  }
  return script;
}

}  // namespace

AddressBookDatabase::AddressBookDatabase() {
  RunScript("sqlite.sql");
  RunScript("sqlite-host.sql");
}

void AddressBookDatabase::RunScript(std::string_view name) {
  std::istringstream script(
      ReadScript(SqliteFile::FileOf(std::string(KTRV_SCHEMA_FOLDER "/").append(name))));
  database::Connection connection(file_.Surroundings());
  connection.Open(ConnectionString());
  for (std::string statement; std::getline(script, statement, ';');) {
    if (statement.find_first_not_of(" \r\n\t") == std::string::npos) continue;
    connection.Execute(FromUtf8(statement));
  }
}

std::vector<String> AddressBookDatabase::Rows(StringView query) {
  database::Recordset rows(file_.Surroundings());
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

}  // namespace ktrv::tests
