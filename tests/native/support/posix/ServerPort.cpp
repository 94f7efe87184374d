#include <array>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <sys/file.h>
#include <unistd.h>

#include "tests/native/support/DatabaseServer.h"
#include "tests/native/support/posix/StartServer.h"

namespace ktrv::tests {
namespace {

/// What the command prints. \throws std::runtime_error when it fails.
std::string OutputOf(const std::string& command) {
  std::FILE* pipe = popen(command.c_str(), "r");
  if (!pipe) throw std::runtime_error("cannot run " + command);
  std::string output;
  std::array<char, 256> part;
  while (std::fgets(part.data(), part.size(), pipe)) output += part.data();
  if (pclose(pipe) != 0) throw std::runtime_error("failed: " + command);
  return output;
}

std::uint16_t Start(const std::string& engine) {
  return StartServer(engine, std::filesystem::path(KTRV_SERVER_FOLDER) / engine);
}

}  // namespace

std::uint16_t StartServer(const std::string& engine, const std::filesystem::path& folder) {
  std::filesystem::create_directories(folder);
  // Held until the process ends, however it ends; then the server stops by itself.
  const int lease = open((folder / "lease").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  if (lease < 0 || flock(lease, LOCK_SH) != 0) throw std::runtime_error("cannot hold the lease");
  return static_cast<std::uint16_t>(std::stoi(
      OutputOf("'" KTRV_TOOLS_FOLDER "/server' start " + engine + " '" + folder.string() + "'")));
}

std::uint16_t PortOf(ServerKind kind) {
  if (kind == ServerKind::MariaDb) {
    static const std::uint16_t port = Start("mariadb");
    return port;
  }
  if (kind == ServerKind::H2) {
    static const std::uint16_t port = Start("h2");
    return port;
  }
  static const std::uint16_t port = Start("postgresql");
  return port;
}

}  // namespace ktrv::tests
