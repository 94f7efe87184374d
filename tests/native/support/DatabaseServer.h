#pragma once

#include <functional>
#include <optional>

#include "database/Connection.h"
#include "database/odbc/OdbcDriver.h"

namespace ktrv::tests {

enum class ServerKind {
  MariaDb,
  PostgreSql,
  H2,  ///< stands in for SQL Server and Oracle, in tests/standins alone
};

/// The port on loopback of the server of this kind that all tests of this build share. It is
/// started at first use, and stays while this process or another test's does.
/// \throws std::runtime_error
std::uint16_t PortOf(ServerKind kind);

/// A database on such a server, empty at first and dropped at its end.
class ServerDatabase {
 public:
  /// \param port of the server, if it is not the one that all tests share
  explicit ServerDatabase(ServerKind kind, std::optional<std::uint16_t> port = {});
  ~ServerDatabase();
  ServerDatabase(const ServerDatabase&) = delete;
  ServerDatabase& operator=(const ServerDatabase&) = delete;

  ServerKind Kind() const { return kind_; }
  String ConnectionString() const { return ConnectionStringOf(name_); }
  database::OdbcDriver& Driver() { return driver_; }

  /// An environment whose connection strings all go to ODBC. \param post closures go there; by
  /// default they are dropped.
  database::Environment Surroundings(std::function<void(std::function<void()>)> post =
                                         [](const auto&) {});

  /// Runs statements one by one. \throws Error
  void Run(std::initializer_list<StringView> statements);

  /// Whether the server lists the statement, which has no quotes, as one that a session of the
  /// database is at work on. \throws Error
  bool IsRunning(StringView statement);

  /// Ends the sessions of everybody who uses the database, as when the server is restarted.
  void EndSessions();

 private:
  String ConnectionStringOf(StringView database) const;
  void RunOn(StringView connectionString, std::initializer_list<StringView> statements);

  ServerKind kind_;
  std::uint16_t port_;
  String name_;
  database::OdbcDriver driver_;
};

}  // namespace ktrv::tests
