#pragma once

#include <memory>

#include "database/Connection.h"

namespace ktrv {

/// A database and one connection to it, opened on demand. Each window has its own.
struct BookDatabase {
  explicit BookDatabase(database::Environment environment);

  /// The same database with a closed connection, or without one if this has none.
  BookDatabase Another() const;

  /// Opens the connection unless it is already open with the connection string. \throws Error
  /// ObjectNotSet without a connection, else the driver's
  database::Connection& Open();
  /// Closes the connection if it is open.
  void Close();
  /// Closes the connection or creates one. \return the closed connection
  database::Connection& Renew();
  /// Takes over the other's connection in its present state. The other gets this one's, closed.
  void TakeConnectionOf(BookDatabase& other);

  database::Environment Environment;
  String ConnectionString;
  String DbType;  ///< dialect word as passed by the host: "SQL", "ORACLE" or "MYSQL"
  std::unique_ptr<database::Connection> Connection;  ///< null before the first Init
};

}  // namespace ktrv
