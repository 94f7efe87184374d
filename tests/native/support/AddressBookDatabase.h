#pragma once

#include <memory>
#include <vector>

#include "tests/native/support/DatabaseServer.h"
#include "tests/native/support/SqliteFile.h"

namespace ktrv::tests {

/// An empty address book with the tables of its host: the project's own schema. It is on SQLite, or
/// on the server that the environment variable KTRV_TEST_ENGINE names (mariadb or postgresql).
class AddressBookDatabase {
 public:
  AddressBookDatabase();

  String ConnectionString() const;
  database::OdbcDriver& Driver() { return driver_; }
  database::Environment Surroundings();

  /// Runs statements one by one. \throws Error
  void Run(std::initializer_list<StringView> statements);

  /// The cells of the query's rows, one text a row, joined with "|"; null is "null".
  std::vector<String> Rows(StringView query);

  /// What to order memberships by to have them as they were written.
  StringView OrderOfWriting() const;

 private:
  bool IsOn(ServerKind kind) const { return server_ && server_->Kind() == kind; }
  void RunScript(std::string_view name);
  void CountOn();

  std::unique_ptr<SqliteFile> file_;  // one of the two
  std::unique_ptr<ServerDatabase> server_;
  database::OdbcDriver driver_;
};

}  // namespace ktrv::tests
