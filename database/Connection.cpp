#include "database/Connection.h"

#include <utility>

#include "common/Passwords.h"
#include "database/DataError.h"
#include "database/Engines.h"

namespace ktrv::database {
std::unique_ptr<Link> DatabaseAddress::TryOpen(const Environment& environment) const {
  try {
    return environment.DriverFor(ConnectionString).Open(ConnectionString, User, Password);
  } catch (const Error& error) {
    // Some drivers repeat the connection string in their message, and messages go to the log.
    const auto hide = [&](StringView text) {
      return HidePasswords(text, ConnectionString, Password);
    };
    throw Error(error.Number(), hide(error.Description()), hide(error.Source()),
                error.LastSystemError());
  }
}

std::unique_ptr<Link> DatabaseAddress::Open(const Environment& environment) const {
  auto link = TryOpen(environment);
  if (!link) throw DataError(ErrorNumber::ObjectClosed);
  return link;
}

Connection::Connection(Environment environment) : environment_(std::move(environment)) {}

void Connection::Open(StringView connectionString, StringView user, StringView password) {
  if (link_) throw DataError(ErrorNumber::ObjectOpen);
  address_ = {String(connectionString), String(user), String(password)};
  if (auto link = address_.TryOpen(environment_)) {
    link_ = std::make_shared<SharedLink>(std::move(link));
    StatementWorked();
  }
}

void Connection::Close() {
  if (!link_) throw DataError(ErrorNumber::ObjectClosed);
  link_.reset();
}

std::int64_t Connection::Execute(StringView text) {
  const auto statement = LiveLink()->Get().Prepare(text, {});
  statement->Execute({});
  StatementWorked();
  return statement->RowsAffected();
}

const std::shared_ptr<SharedLink>& Connection::LiveLink() {
  if (!link_) throw DataError(ErrorNumber::ObjectClosed);
  const auto lastWorked = std::exchange(lastWorked_, {});
  if (link_->InTransaction) return link_;
  const bool inUse = std::chrono::steady_clock::now() - lastWorked < kIdle;
  if (link_->Unusable || (!inUse && !Answers(link_->Get()))) {
    link_ = std::make_shared<SharedLink>(address_.Open(environment_));
  }
  return link_;
}

void Connection::StatementWorked() {
  lastWorked_ = std::chrono::steady_clock::now();
}

}  // namespace ktrv::database
