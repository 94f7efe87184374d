#pragma once

#include <string>

#include "tests/native/support/DatabaseServer.h"

namespace ktrv::tests {

/// A server that no other test uses, so that it may hang. It stops by itself when this process has
/// ended.
class OwnServer {
 public:
  /// \throws std::runtime_error, as the others
  static OwnServer& Of(ServerKind kind);

  std::uint16_t Port() const { return port_; }

  void Pause() const;
  void Resume() const;

 private:
  explicit OwnServer(ServerKind kind);

  std::string folder_;
  std::uint16_t port_;
};

}  // namespace ktrv::tests
