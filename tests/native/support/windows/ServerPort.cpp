#include <cstdlib>
#include <stdexcept>

#include "tests/native/support/DatabaseServer.h"

namespace ktrv::tests {

/// The servers run on the system below; tools/with-servers started them and tells their ports.
std::uint16_t PortOf(ServerKind kind) {
  const char* name = kind == ServerKind::MariaDb ? "KTRV_MARIADB_PORT" : "KTRV_POSTGRESQL_PORT";
  const char* port = std::getenv(name);
  if (!port) throw std::runtime_error(std::string(name) + " is not set: run it by with-servers");
  return static_cast<std::uint16_t>(std::atoi(port));
}

}  // namespace ktrv::tests
