#include "tests/line/OwnServer.h"

#include <cstdlib>
#include <stdexcept>

#include "tests/native/support/posix/StartServer.h"

namespace ktrv::tests {
namespace {

void Run(const std::string& arguments) {
  const std::string command = "'" KTRV_TOOLS_FOLDER "/server' " + arguments;
  if (std::system(command.c_str()) != 0) throw std::runtime_error("failed: " + command);
}

}  // namespace

OwnServer& OwnServer::Of(ServerKind kind) {
  if (kind == ServerKind::MariaDb) {
    static OwnServer server(kind);
    return server;
  }
  static OwnServer server(kind);
  return server;
}

OwnServer::OwnServer(ServerKind kind)
    : folder_(std::string(KTRV_SERVER_FOLDER "/paused-") +
              (kind == ServerKind::MariaDb ? "mariadb" : "postgresql")),
      port_(StartServer(kind == ServerKind::MariaDb ? "mariadb" : "postgresql", folder_)) {}

void OwnServer::Pause() const {
  Run("pause '" + folder_ + "'");
}

void OwnServer::Resume() const {
  Run("resume '" + folder_ + "'");
}

}  // namespace ktrv::tests
