#pragma once

#include <optional>

#include "tests/line/Host.h"
#include "tests/native/support/DatabaseServer.h"
#include "tests/native/support/Line.h"
#include "tests/native/support/SchemaScript.h"

namespace ktrv::tests {

/// A book on a server at the end of a line.
struct Book {
  /// \param port of the server, if it is not the one that all tests share
  explicit Book(ServerKind kind, int contacts = kContacts, std::optional<std::uint16_t> port = {})
      : Database(kind, port), Way(port ? *port : PortOf(kind)) {
    database::Connection connection(Database.Surroundings());
    connection.Open(Database.ConnectionString());
    const std::string schema = kind == ServerKind::MariaDb ? "mysql" : "postgresql";
    RunSchemaScript(connection, schema + ".sql");
    RunSchemaScript(connection, schema + "-host.sql");
    FillBook(connection, contacts);
  }

  ServerDatabase Database;
  Line Way;
};

}  // namespace ktrv::tests
