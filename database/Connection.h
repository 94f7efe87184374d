#pragma once

#include <chrono>
#include <memory>

#include "database/Driver.h"
#include "database/Environment.h"
#include "database/SharedLink.h"

namespace ktrv::database {

/// State of a connection or recordset, with the values of ADO.
enum class ObjectState : std::int32_t { Closed = 0, Open = 1, Executing = 4, Fetching = 8 };

/// The arguments to open a link.
struct DatabaseAddress {
  String ConnectionString;
  String User;
  String Password;

  /// Opens a new link. Thread-safe. \throws Error the driver's; ObjectClosed if the driver returns
  /// neither a link nor an error
  std::unique_ptr<Link> Open(const Environment& environment) const;
  /// The same, but returns null if the driver returns neither.
  std::unique_ptr<Link> TryOpen(const Environment& environment) const;
};

/// A connection to a database that can be closed and reopened.
class Connection {
 public:
  explicit Connection(Environment environment);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// \throws Error ObjectOpen if already open, else the driver's. It stays closed after a failure,
  /// and also if the driver returns neither a link nor an error.
  void Open(StringView connectionString, StringView user = {}, StringView password = {});

  /// \throws Error ObjectClosed if closed
  void Close();

  ObjectState State() const { return link_ ? ObjectState::Open : ObjectState::Closed; }

  /// The string of the last Open; empty before the first one.
  const String& ConnectionString() const { return address_.ConnectionString; }

  /// Executes a statement that returns no rows. \return rows affected. \throws Error
  std::int64_t Execute(StringView text);

  /// The open link; null if closed.
  const std::shared_ptr<SharedLink>& CurrentLink() const { return link_; }

  /// The link to use for a statement now. After an idle time or a failed statement it is first
  /// tested with a query, and replaced if it is dead, because the server may have been restarted or
  /// replaced meanwhile. Never inside a transaction. No statement is executed twice. \throws Error
  /// ObjectClosed (commands throw ADO's InvalidConnection instead); the driver's if the link cannot
  /// be replaced. The next call tries again.
  const std::shared_ptr<SharedLink>& LiveLink();

  /// Call after a successful statement; marks the link as alive.
  void StatementWorked();

  const DatabaseAddress& Address() const { return address_; }
  const Environment& Surroundings() const { return environment_; }

 private:
  Environment environment_;
  DatabaseAddress address_;
  std::shared_ptr<SharedLink> link_;
  std::chrono::steady_clock::time_point lastWorked_;  // epoch: not known to be alive
};

}  // namespace ktrv::database
