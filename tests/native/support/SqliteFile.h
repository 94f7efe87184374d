#pragma once

#include <filesystem>

#include "database/Connection.h"
#include "database/odbc/OdbcDriver.h"

namespace ktrv::tests {

/// An SQLite database in a file of its own, empty at first and removed at its end.
///
///   SqliteFile file;
///   file.Run({u"CREATE TABLE T (ID INTEGER PRIMARY KEY)", u"INSERT INTO T VALUES (1)"});
///   Connection connection(file.Surroundings()); connection.Open(file.ConnectionString());
class SqliteFile {
 public:
  SqliteFile();
  ~SqliteFile();
  SqliteFile(const SqliteFile&) = delete;
  SqliteFile& operator=(const SqliteFile&) = delete;

  /// For the ODBC driver; it refuses to make a new file.
  String ConnectionString() const { return ConnectionStringOf(path_); }
  static String ConnectionStringOf(const std::string& path);

  /// An environment whose connection strings all go to ODBC. \param post closures go there; by
  /// default they are dropped.
  database::Environment Surroundings(std::function<void(std::function<void()>)> post =
                                         [](const auto&) {});

  /// Runs statements one by one. \throws Error
  void Run(std::initializer_list<StringView> statements);

  /// The file as this program opens it, which under Wine is not how the driver does.
  std::filesystem::path File() const { return FileOf(path_); }
  static std::filesystem::path FileOf(const std::string& path);

 private:
  std::string path_;
  database::OdbcDriver driver_;
};

}  // namespace ktrv::tests
