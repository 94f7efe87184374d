#pragma once

#include <chrono>
#include <memory>

#include "database/Driver.h"
#include "database/Environment.h"
#include "database/SharedLink.h"

namespace ktrv::database {

/// State of a connection or a recordset, as ADO codes it.
enum class ObjectState : std::int32_t { Closed = 0, Open = 1, Executing = 4, Fetching = 8 };

/// Where a database is and who asks.
struct DatabaseAddress {
  String ConnectionString;
  String User;
  String Password;

  /// A new link to it. May be called on any thread. \throws Error the driver's, or ObjectClosed
  /// when the driver gives neither a link nor a reason.
  std::unique_ptr<Link> Open(const Environment& environment) const;
  /// The same, but null when the driver gives neither.
  std::unique_ptr<Link> TryOpen(const Environment& environment) const;
};

/// A session with a database that can be closed and opened again.
class Connection {
 public:
  explicit Connection(Environment environment);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// \throws Error ObjectOpen when open already, else the driver's failure; closed then, as it is
  /// when the driver gives no link and no reason.
  void Open(StringView connectionString, StringView user = {}, StringView password = {});

  /// \throws Error ObjectClosed when closed.
  void Close();

  ObjectState State() const { return link_ ? ObjectState::Open : ObjectState::Closed; }

  /// The string of the last Open; empty before.
  const String& ConnectionString() const { return address_.ConnectionString; }

  /// Runs a text that returns no rows. \return rows changed. \throws Error
  std::int64_t Execute(StringView text);

  /// The open link; null when closed.
  const std::shared_ptr<SharedLink>& CurrentLink() const { return link_; }

  /// The open link for a statement that is to run now. A user may have thought since the last one,
  /// while the server was restarted or another one took over: a link that was idle, or on which the
  /// last statement failed, is first asked whether it still works, and replaced when it does not;
  /// but never within a transaction. No statement is ever run a second time. \throws Error
  /// ObjectClosed (commands give ADO's InvalidConnection themselves), the driver's when the link
  /// cannot be replaced; it is tried again the next time then.
  const std::shared_ptr<SharedLink>& LiveLink();

  /// To be told when the statement has worked.
  void StatementWorked();

  const DatabaseAddress& Address() const { return address_; }
  const Environment& Surroundings() const { return environment_; }

 private:
  Environment environment_;
  DatabaseAddress address_;
  std::shared_ptr<SharedLink> link_;
  std::chrono::steady_clock::time_point lastWorked_;  // the epoch: not known to work
};

}  // namespace ktrv::database
