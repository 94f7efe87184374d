#pragma once

#include <string>
#include <unistd.h>

#include "common/Unique.h"
#include "tests/native/support/DatabaseServer.h"

namespace ktrv::tests {

/// A server that one test at a time uses, of all processes, so that it may hang. It stops by itself
/// when they have ended.
class OwnServer {
 public:
  /// Waits until no other test has it. \throws std::runtime_error, as the others
  explicit OwnServer(ServerKind kind);

  std::uint16_t Port() const { return port_; }

  void Pause() const;
  void Resume() const;

 private:
  std::string folder_;
  Unique<int, close> turn_;  ///< locked by the test that has it
  std::uint16_t port_ = 0;
};

}  // namespace ktrv::tests
