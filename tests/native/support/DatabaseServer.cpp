#include "tests/native/support/DatabaseServer.h"

#include <chrono>
#include <random>
#include <stdexcept>
#include <thread>

#include "common/Error.h"
#include "database/Recordset.h"

namespace ktrv::tests {

ServerDatabase::ServerDatabase(ServerKind kind, std::optional<std::uint16_t> port)
    : kind_(kind), port_(port ? *port : PortOf(kind)) {
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
  const String place = u";Server=127.0.0.1;Port=" + ToDecimal(port_) + u";Database=" +
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

bool ServerDatabase::IsRunning(StringView statement) {
  const String ofDatabase =
      kind_ == ServerKind::MariaDb
          ? u"SELECT 1 FROM information_schema.PROCESSLIST WHERE DB = '" + name_ + u"' AND INFO"
          : u"SELECT 1 FROM pg_stat_activity WHERE DATNAME = '" + name_ +
                u"' AND STATE = 'active' AND QUERY";
  database::Recordset sessions(Surroundings());
  sessions.Open(ofDatabase + u" = '" + String(statement) + u"'", ConnectionString());
  return !sessions.EndOfFile();
}

void ServerDatabase::EndSessions() {
  const bool mariaDb = kind_ == ServerKind::MariaDb;
  database::Connection connection(Surroundings());
  connection.Open(ConnectionStringOf(mariaDb ? u"mysql" : u"postgres"));
  const String sessions =
      mariaDb ? u"SELECT ID FROM information_schema.PROCESSLIST WHERE DB = '" + name_ + u"'"
              : u"SELECT PG_TERMINATE_BACKEND(PID) AS ID FROM pg_stat_activity WHERE DATNAME = '" +
                    name_ + u"'";
  database::Recordset ids(Surroundings());
  ids.Open(sessions, connection);
  for (; mariaDb && !ids.EndOfFile(); ids.MoveNext()) {
    try {
      connection.Execute(u"KILL " + ToText(ids.Field(u"ID")));
    } catch (const Error&) {
      // It ended by itself since it was listed; whether all have is asked below.
    }
  }
  // Told to end, a session takes a moment to be gone.
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  const String left =
      mariaDb ? sessions : u"SELECT PID FROM pg_stat_activity WHERE DATNAME = '" + name_ + u"'";
  for (;;) {
    database::Recordset still(Surroundings());
    still.Open(left, connection);
    if (still.EndOfFile()) return;
    if (std::chrono::steady_clock::now() > deadline) {
      throw std::runtime_error("sessions of the test's database do not end");
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
}

void ServerDatabase::RunOn(StringView connectionString,
                           std::initializer_list<StringView> statements) {
  database::Connection connection(Surroundings());
  connection.Open(connectionString);
  for (const StringView statement : statements) connection.Execute(statement);
}

}  // namespace ktrv::tests
