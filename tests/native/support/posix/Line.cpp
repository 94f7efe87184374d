#include "tests/native/support/Line.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <atomic>
#include <cerrno>
#include <deque>
#include <fcntl.h>
#include <list>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace ktrv::tests {
namespace {

using Clock = std::chrono::steady_clock;

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  int Get() const { return number_; }

 private:
  int number_ = -1;
};

sockaddr_in OnLoopback(std::uint16_t port) {
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(port);
  return address;
}

Descriptor NewSocket() {
  return Descriptor(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
}

void DoNotBlock(int socket) {
  fcntl(socket, F_SETFL, fcntl(socket, F_GETFL) | O_NONBLOCK);
  const int on = 1;
  setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

/// Bytes on their way in one direction.
class Flow {
 public:
  enum class Reading { Came, Nothing, Ended };

  Reading Read(int from, Clock::duration delay, Clock::time_point notBefore) {
    std::array<char, 65536> part;
    const ssize_t size = read(from, part.data(), part.size());
    if (size < 0) return errno == EAGAIN || errno == EINTR ? Reading::Nothing : Reading::Ended;
    if (size == 0) return Reading::Ended;
    const auto due = std::max(Clock::now() + delay, notBefore);
    parts_.push_back({due, std::string(part.data(), static_cast<std::size_t>(size))});
    return Reading::Came;
  }
  /// \return false when the receiver is gone
  bool Write(int to) {
    while (!parts_.empty() && parts_.front().Due <= Clock::now()) {
      std::string& bytes = parts_.front().Bytes;
      const ssize_t size = send(to, bytes.data(), bytes.size(), MSG_NOSIGNAL);
      if (size < 0) return errno == EAGAIN || errno == EINTR;
      bytes.erase(0, static_cast<std::size_t>(size));
      if (!bytes.empty()) return true;
      parts_.pop_front();
    }
    return true;
  }
  bool IsEmpty() const { return parts_.empty(); }
  Clock::time_point Due() const { return parts_.front().Due; }

 private:
  struct Part {
    Clock::time_point Due;
    std::string Bytes;
  };
  std::deque<Part> parts_;
};

}  // namespace

class Line::Exchange {
 public:
  explicit Exchange(std::uint16_t server) : ServerPort(server), listener_(NewSocket()) {
    sockaddr_in address = OnLoopback(0);
    socklen_t length = sizeof address;
    auto* const any = reinterpret_cast<sockaddr*>(&address);
    int ends[2] = {};
    if (bind(listener_.Get(), any, length) != 0 || listen(listener_.Get(), SOMAXCONN) != 0 ||
        getsockname(listener_.Get(), any, &length) != 0 || pipe2(ends, O_CLOEXEC) != 0) {
      throw std::runtime_error("no line can be made");
    }
    Port = ntohs(address.sin_port);
    DoNotBlock(listener_.Get());
    stopped_ = Descriptor(ends[0]);
    stop_ = Descriptor(ends[1]);
    thread_ = std::thread([this] { Run(); });
  }
  ~Exchange() {
    stop_ = Descriptor();
    thread_.join();
  }

  const std::uint16_t ServerPort;
  std::uint16_t Port = 0;
  std::atomic<std::chrono::milliseconds> Delay{std::chrono::milliseconds(0)};
  std::atomic<int> Turns = 0;
  std::atomic<int> Connections = 0;

 private:
  struct Connection {
    Descriptor Client;
    Descriptor Server;             // none before the connection has reached it
    Clock::time_point There = {};  // when it does
    Flow Up = {};                  // to the server
    Flow Down = {};                // to the client
    bool Ended = false;            // by one of them; what is on its way still arrives
    enum class Speaker { None, Client, Server } Last = Speaker::None;
  };

  void Run() {
    for (;;) {
      std::vector<pollfd> polled = {{stopped_.Get(), POLLIN, 0}, {listener_.Get(), POLLIN, 0}};
      for (const Connection& each : connections_) {
        polled.push_back({each.Client.Get(), POLLIN, 0});
        polled.push_back({each.Server.Get(), POLLIN, 0});  // a number below 0 is passed over
      }
      const timespec patience = UntilNext();
      if (ppoll(polled.data(), polled.size(), &patience, nullptr) < 0 && errno != EINTR) return;
      if (polled[0].revents != 0) return;
      std::size_t at = 2;
      for (Connection& each : connections_) {
        const bool client = polled[at++].revents != 0;
        const bool server = polled[at++].revents != 0;
        Serve(each, client, server);
      }
      connections_.remove_if([](const Connection& each) {
        return each.Ended && each.Up.IsEmpty() && each.Down.IsEmpty();
      });
      if (polled[1].revents != 0) Accept();
    }
  }

  timespec UntilNext() const {
    auto next = Clock::now() + std::chrono::seconds(1);
    for (const Connection& each : connections_) {
      if (each.Server.Get() < 0) next = std::min(next, each.There);
      if (!each.Up.IsEmpty()) next = std::min(next, std::max(each.Up.Due(), each.There));
      if (!each.Down.IsEmpty()) next = std::min(next, each.Down.Due());
    }
    const auto left = std::max(next - Clock::now(), Clock::duration::zero());
    const auto seconds = std::chrono::floor<std::chrono::seconds>(left);
    return {seconds.count(), std::chrono::nanoseconds(left - seconds).count()};
  }

  void Accept() {
    Descriptor client(accept4(listener_.Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (client.Get() < 0) return;
    DoNotBlock(client.Get());
    ++Connections;
    ++Turns;
    // The client knows that it is connected after one turn, the server half a turn later.
    connections_.push_back({std::move(client), Descriptor(), Clock::now() + Delay.load() * 3 / 2});
  }

  void Serve(Connection& connection, bool client, bool server) {
    if (connection.Server.Get() < 0 && connection.There <= Clock::now()) Reach(connection);
    const auto half = Delay.load() / 2;
    if (client && !connection.Ended) {
      const auto read = connection.Up.Read(connection.Client.Get(), half, connection.There);
      connection.Ended = read == Flow::Reading::Ended;
      if (read == Flow::Reading::Came) Speak(connection, Connection::Speaker::Client);
    }
    if (server && !connection.Ended) {
      const auto read = connection.Down.Read(connection.Server.Get(), half, {});
      connection.Ended = read == Flow::Reading::Ended;
      if (read == Flow::Reading::Came) Speak(connection, Connection::Speaker::Server);
    }
    const bool reached = connection.Server.Get() >= 0;
    if (reached && !connection.Up.Write(connection.Server.Get())) return Drop(connection);
    if (!connection.Down.Write(connection.Client.Get())) Drop(connection);
  }

  void Speak(Connection& connection, typename Connection::Speaker who) {
    const bool answers = who == Connection::Speaker::Server && connection.Last != who;
    connection.Last = who;
    if (answers) ++Turns;
  }

  static void Drop(Connection& connection) {
    connection = Connection();
    connection.Ended = true;
  }

  void Reach(Connection& connection) const {
    Descriptor server = NewSocket();
    const sockaddr_in address = OnLoopback(ServerPort);
    if (connect(server.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
      return Drop(connection);
    }
    DoNotBlock(server.Get());
    connection.Server = std::move(server);
  }

  Descriptor listener_;
  Descriptor stopped_;  // readable when stop_ is closed
  Descriptor stop_;
  std::list<Connection> connections_;  // of the thread alone
  std::thread thread_;
};

Line::Line(std::uint16_t serverPort) : exchange_(std::make_unique<Exchange>(serverPort)) {}

Line::~Line() = default;

String Line::Through(StringView connectionString) const {
  const String port = u"Port=" + ToDecimal(exchange_->ServerPort) + u";";
  const std::size_t at = connectionString.find(port);
  if (at == StringView::npos) throw std::runtime_error("the string names another server");
  return String(connectionString.substr(0, at)) + u"Port=" + ToDecimal(exchange_->Port) + u";" +
         String(connectionString.substr(at + port.size()));
}

void Line::SetDelay(std::chrono::milliseconds thereAndBack) {
  exchange_->Delay = thereAndBack;
}

int Line::Turns() const {
  return exchange_->Turns;
}

int Line::Connections() const {
  return exchange_->Connections;
}

}  // namespace ktrv::tests
