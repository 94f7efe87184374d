#pragma once

#include <vector>

#include "tests/native/support/SqliteFile.h"

namespace ktrv::tests {

/// An empty address book on SQLite, with the tables of its host: the project's own schema.
class AddressBookDatabase {
 public:
  AddressBookDatabase();

  String ConnectionString() const { return file_.ConnectionString(); }
  database::OdbcDriver& Driver() { return driver_; }

  /// Runs statements one by one. \throws Error
  void Run(std::initializer_list<StringView> statements) { file_.Run(statements); }

  /// The cells of the query's rows, one text a row, joined with "|"; null is "null".
  std::vector<String> Rows(StringView query);

 private:
  void RunScript(std::string_view name);

  SqliteFile file_;
  database::OdbcDriver driver_;
};

}  // namespace ktrv::tests
