#pragma once

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <sstream>
#include <string>

#include "tests/native/support/AddressBookDatabase.h"
#include "tests/native/support/UnusedPath.h"
#include "tool/import/Import.h"

namespace ktrv::tests {

/// Imports files into an empty address book.
class ImportFixture : public testing::Test {
 protected:
  ImportFixture() {
    Folder = UnusedPath();
    std::filesystem::create_directories(Folder);
    Connection.Open(Database.ConnectionString());
    Options.File = Path("people.csv");
  }
  ~ImportFixture() override {
    std::error_code ignored;
    std::filesystem::remove_all(Folder, ignored);
  }

  std::string Path(const std::string& name) const { return (Folder / name).string(); }
  void Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(Folder / name, std::ios::binary) << bytes;
  }
  std::string Read(const std::string& name) const {
    std::ifstream file(Folder / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  bool Exists(const std::string& name) const { return std::filesystem::exists(Folder / name); }

  int Import() { return Import(Connection); }
  int Import(database::Connection& connection) {
    Out.str({});
    Messages.str({});
    tool::Book book{connection, data::Dialect::Sql};
    tool::Console console{Out, Messages, In};
    console.Json = Json;
    return tool::Import(Options, book, console);
  }
  int Import(const std::string& bytes) {
    Write("people.csv", bytes);
    return Import();
  }
  /// Imports a file of the folder files/.
  int ImportSample(const std::string& name) {
    Options.File = std::string(KTRV_IMPORT_FILES) + "/" + name;
    if (Options.Rejects.empty()) Options.Rejects = Path("rejects");
    return Import();
  }
  std::vector<String> Rows(StringView query) { return Database.Rows(query); }
  std::vector<String> Names() {
    return Rows(u"SELECT FNAME, LNAME, MOBILENO FROM SMS_ABCONTACTS ORDER BY ID");
  }

  AddressBookDatabase Database;
  database::Connection Connection{Database.Surroundings()};
  std::filesystem::path Folder;
  tool::ImportOptions Options;
  bool Json = false;
  std::istringstream In;
  std::ostringstream Out;
  std::ostringstream Messages;
};

}  // namespace ktrv::tests
