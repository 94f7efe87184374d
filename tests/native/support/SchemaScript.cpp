#include "tests/native/support/SchemaScript.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

#include "tests/native/support/SqliteFile.h"

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

void RunSchemaScript(database::Connection& connection, std::string_view name) {
  std::istringstream script(
      ReadScript(SqliteFile::FileOf(std::string(KTRV_SCHEMA_FOLDER "/").append(name))));
  for (std::string statement; std::getline(script, statement, ';');) {
    if (statement.find_first_not_of(" \r\n\t") == std::string::npos) continue;
    connection.Execute(FromUtf8(statement));
  }
}

}  // namespace ktrv::tests
