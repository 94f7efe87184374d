#include "database/Connection.h"

#include <utility>

#include "database/DataError.h"

namespace ktrv::database {

std::unique_ptr<Link> DatabaseAddress::TryOpen(const Environment& environment) const {
  return environment.DriverFor(ConnectionString).Open(ConnectionString, User, Password);
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
  }
}

void Connection::Close() {
  OpenLink();
  link_.reset();
}

std::int64_t Connection::Execute(StringView text) {
  const auto statement = OpenLink().Prepare(text, {});
  statement->Execute({});
  return statement->RowsAffected();
}

Link& Connection::OpenLink() {
  if (!link_) throw DataError(ErrorNumber::ObjectClosed);
  return link_->Get();
}

}  // namespace ktrv::database
