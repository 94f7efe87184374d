#include "services/BookDatabase.h"

#include <utility>

#include "common/Error.h"

namespace ktrv {

BookDatabase::BookDatabase(database::Environment environment)
    : Environment(std::move(environment)) {}

BookDatabase BookDatabase::Another() const {
  BookDatabase another(Environment);
  another.ConnectionString = ConnectionString;
  another.DbType = DbType;
  if (Connection) another.Renew();
  return another;
}

database::Connection& BookDatabase::Open() {
  if (!Connection) {
    throw Error(ErrorNumber::ObjectNotSet);
  }
  // The host may have changed the connection string.
  if (Connection->ConnectionString() != ConnectionString) Close();
  if (Connection->State() == database::ObjectState::Closed) Connection->Open(ConnectionString);
  return *Connection;
}

void BookDatabase::Close() {
  if (Connection && Connection->State() != database::ObjectState::Closed) Connection->Close();
}

database::Connection& BookDatabase::Renew() {
  Close();
  if (!Connection) Connection = std::make_unique<database::Connection>(Environment);
  return *Connection;
}

void BookDatabase::TakeConnectionOf(BookDatabase& other) {
  Connection.swap(other.Connection);
  other.Close();
}

}  // namespace ktrv
