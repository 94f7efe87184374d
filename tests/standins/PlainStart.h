#pragma once

#include <cstdint>
#include <list>
#include <thread>

namespace ktrv::tests {

/// Stands on loopback between PostgreSQL's ODBC driver and a server that speaks PostgreSQL's
/// protocol but not all of its statements, and puts others in the place of the two with which the
/// driver begins each session.
class PlainStart {
 public:
  /// \throws std::runtime_error
  explicit PlainStart(std::uint16_t serverPort);
  ~PlainStart();
  PlainStart(const PlainStart&) = delete;
  PlainStart& operator=(const PlainStart&) = delete;

  std::uint16_t Port() const { return port_; }

 private:
  void Accept();

  std::uint16_t serverPort_;
  std::uint16_t port_ = 0;
  int listener_ = -1;
  std::list<int> sockets_;  // of both sides, until the end
  std::list<std::thread> pumps_;
  std::thread acceptor_;
};

}  // namespace ktrv::tests
