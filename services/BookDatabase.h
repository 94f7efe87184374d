#pragma once

#include <memory>

#include "database/Connection.h"

namespace ktrv {

/// A database, and one connection to it that is opened when it is needed. Each window has its own.
struct BookDatabase {
  explicit BookDatabase(database::Environment environment);

  /// The same database with a closed connection; with none where this one has none.
  BookDatabase Another() const;

  /// Opens the connection with the connection string unless it is open with that.
  /// \throws Error ObjectNotSet without a connection, else the driver's.
  database::Connection& Open();
  /// Closes the connection unless it is closed.
  void Close();
  /// A closed connection, as if it were new.
  database::Connection& Renew();
  /// Gets the other's connection as it is; the other has a closed one then.
  void TakeConnectionOf(BookDatabase& other);

  database::Environment Environment;
  String ConnectionString;
  String DbType;  ///< dialect word as the host gave it: "SQL", "ORACLE" or "MYSQL"
  std::unique_ptr<database::Connection> Connection;  ///< null before the host's first Init
};

}  // namespace ktrv
