#include "tests/line/OwnServer.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <sys/file.h>

#include "tests/native/support/posix/StartServer.h"

namespace ktrv::tests {
namespace {

void Run(const std::string& arguments) {
  const std::string command = "'" KTRV_TOOLS_FOLDER "/server' " + arguments;
  if (std::system(command.c_str()) != 0) throw std::runtime_error("failed: " + command);
}

/// Waits until no other process has the server; then it belongs to this one until it has ended.
std::uint16_t Reserve(const std::string& engine, const std::string& folder) {
  std::filesystem::create_directories(folder);
  const int turn = open((folder + "/turn").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (turn < 0 || flock(turn, LOCK_EX) != 0) throw std::runtime_error("cannot reserve " + folder);
  Run("resume '" + folder + "'");  // one that was killed may have left it paused
  return StartServer(engine, folder);
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
      port_(Reserve(kind == ServerKind::MariaDb ? "mariadb" : "postgresql", folder_)) {}

void OwnServer::Pause() const {
  Run("pause '" + folder_ + "'");
}

void OwnServer::Resume() const {
  Run("resume '" + folder_ + "'");
}

}  // namespace ktrv::tests
