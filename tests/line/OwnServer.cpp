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

}  // namespace

OwnServer::OwnServer(ServerKind kind)
    : folder_(std::string(KTRV_SERVER_FOLDER "/paused-") +
              (kind == ServerKind::MariaDb ? "mariadb" : "postgresql")) {
  std::filesystem::create_directories(folder_);
  turn_ = decltype(turn_)(open((folder_ + "/turn").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  if (flock(turn_.Get(), LOCK_EX) != 0) {
    throw std::runtime_error("cannot reserve " + folder_);
  }
  Resume();  // one that was killed may have left it paused
  port_ = StartServer(kind == ServerKind::MariaDb ? "mariadb" : "postgresql", folder_);
}

void OwnServer::Pause() const {
  Run("pause '" + folder_ + "'");
}

void OwnServer::Resume() const {
  Run("resume '" + folder_ + "'");
}

}  // namespace ktrv::tests
