#include "tests/standins/PlainStart.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>

namespace ktrv::tests {
namespace {

struct Replacement {
  std::string_view Statement;
  std::string_view By;  // as long, because the length of the message stays
};

constexpr Replacement kReplacements[] = {
    {"SET extra_float_digits = 2", "SET DATESTYLE TO ISO      "},
    {"show transaction_isolation", "select 'read committed'   "},
};
static_assert(kReplacements[0].Statement.size() == kReplacements[0].By.size());
static_assert(kReplacements[1].Statement.size() == kReplacements[1].By.size());

sockaddr_in Loopback(std::uint16_t port) {
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

/// Else each short message waits for the former one's receipt.
void SendAtOnce(int socket) {
  const int on = 1;
  setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

int NewSocket() {
  const int made = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (made < 0) throw std::runtime_error("no socket");
  return made;
}

bool SendAll(int to, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = send(to, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

void Pump(int from, int to, bool replaces) {
  char buffer[65536];
  for (;;) {
    const ssize_t got = recv(from, buffer, sizeof buffer, 0);
    if (got <= 0) break;
    std::string bytes(buffer, static_cast<std::size_t>(got));
    for (const Replacement& each : kReplacements) {
      const std::size_t at = replaces ? bytes.find(each.Statement) : std::string::npos;
      if (at != std::string::npos) bytes.replace(at, each.By.size(), each.By);
    }
    if (!SendAll(to, bytes)) break;
  }
  shutdown(from, SHUT_RDWR);
  shutdown(to, SHUT_RDWR);
}

}  // namespace

PlainStart::PlainStart(std::uint16_t serverPort) : serverPort_(serverPort), listener_(NewSocket()) {
  sockaddr_in address = Loopback(0);
  socklen_t length = sizeof address;
  if (bind(listener_, reinterpret_cast<sockaddr*>(&address), length) != 0 ||
      listen(listener_, 16) != 0 ||
      getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
    close(listener_);
    throw std::runtime_error("cannot listen on loopback");
  }
  port_ = ntohs(address.sin_port);
  acceptor_ = std::thread([this] { Accept(); });
}

PlainStart::~PlainStart() {
  shutdown(listener_, SHUT_RDWR);
  acceptor_.join();
  for (const int each : sockets_) shutdown(each, SHUT_RDWR);
  for (std::thread& pump : pumps_) pump.join();
  for (const int each : sockets_) close(each);
  close(listener_);
}

void PlainStart::Accept() {
  for (;;) {
    const int client = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (client < 0) return;
    const int server = NewSocket();
    SendAtOnce(client);
    SendAtOnce(server);
    sockets_.push_back(client);
    sockets_.push_back(server);
    const sockaddr_in address = Loopback(serverPort_);
    if (connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
      shutdown(client, SHUT_RDWR);
      continue;
    }
    pumps_.emplace_back(Pump, client, server, true);
    pumps_.emplace_back(Pump, server, client, false);
  }
}

}  // namespace ktrv::tests
