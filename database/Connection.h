#pragma once

#include <memory>

#include "database/Driver.h"
#include "database/Environment.h"

namespace ktrv::database {

/// State of a connection or a recordset, as ADO codes it.
enum class ObjectState : std::int32_t { Closed = 0, Open = 1, Executing = 4, Fetching = 8 };

class Recordset;

/// A session with a database that can be closed and opened again.
class Connection {
 public:
  explicit Connection(Environment environment);
  ~Connection();

  /// \throws Error ObjectOpen when open already, else the driver's failure; closed then.
  void Open(StringView connectionString, StringView user = {}, StringView password = {});

  /// \throws Error ObjectClosed when closed.
  void Close();

  ObjectState State() const;

  /// The string of the last Open; empty before.
  const String& ConnectionString() const { return connectionString_; }

  /// Runs a text that returns no rows. \return rows changed. \throws Error
  std::int64_t Execute(StringView text);

  /// The open link. \throws Error ObjectClosed (commands give ADO's InvalidConnection themselves).
  Link& OpenLink();

  const Environment& Surroundings() const { return environment_; }

 private:
  Environment environment_;
  String connectionString_;
  std::shared_ptr<Link> link_;
};

}  // namespace ktrv::database
