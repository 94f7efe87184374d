#include "tests/native/support/DatabaseServer.h"

#include <random>

#include "common/Error.h"

namespace ktrv::tests {

ServerDatabase::ServerDatabase(ServerKind kind) : kind_(kind) {
  std::random_device random;
  name_ = u"test_" + ToDecimal(random()) + u"_" + ToDecimal(random());
  RunOn(ConnectionStringOf(kind == ServerKind::MariaDb ? u"mysql" : u"postgres"),
        {u"CREATE DATABASE " + name_});
}

ServerDatabase::~ServerDatabase() {
  const bool mariaDb = kind_ == ServerKind::MariaDb;
  try {
    RunOn(ConnectionStringOf(mariaDb ? u"mysql" : u"postgres"),
          {u"DROP DATABASE " + name_ + (mariaDb ? u"" : u" WITH (FORCE)")});
  } catch (const Error&) {
    // The server keeps nothing beyond the tests anyway.
  }
}

String ServerDatabase::ConnectionStringOf(StringView database) const {
  const String place = u";Server=127.0.0.1;Port=" + ToDecimal(PortOf(kind_)) + u";Database=" +
                       String(database) + u";Uid=addressbook";
  if (kind_ == ServerKind::MariaDb)
    return u"Driver={MariaDB Unicode}" + place + u";Pwd=addressbook";
  return u"Driver={PostgreSQL Unicode}" + place;
}

database::Environment ServerDatabase::Surroundings(
    std::function<void(std::function<void()>)> post) {
  return {[this](StringView) -> database::Driver& { return driver_; }, std::move(post)};
}

void ServerDatabase::Run(std::initializer_list<StringView> statements) {
  RunOn(ConnectionString(), statements);
}

void ServerDatabase::RunOn(StringView connectionString,
                           std::initializer_list<StringView> statements) {
  database::Connection connection(Surroundings());
  connection.Open(connectionString);
  for (const StringView statement : statements) connection.Execute(statement);
}

}  // namespace ktrv::tests
