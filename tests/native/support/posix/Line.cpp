#include "tests/native/support/Line.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <atomic>
#include <cerrno>
#include <deque>
#include <fcntl.h>
#include <list>
#include <mutex>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <optional>
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

/// Its end is a reset.
void EndByReset(int socket) {
  const linger atOnce = {1, 0};
  setsockopt(socket, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
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

  static Reading Read(int from, std::string& bytes) {
    std::array<char, 65536> part;
    const ssize_t size = read(from, part.data(), part.size());
    if (size < 0) return errno == EAGAIN || errno == EINTR ? Reading::Nothing : Reading::Ended;
    if (size == 0) return Reading::Ended;
    bytes.assign(part.data(), static_cast<std::size_t>(size));
    return Reading::Came;
  }
  void Send(std::string bytes, Clock::time_point due) {
    if (!bytes.empty()) parts_.push_back({due, std::move(bytes)});
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

  void FailAfter(std::int64_t bytes, Fault fault, Where where) {
    const std::lock_guard lock(mutex_);
    fault_ = fault;
    where_ = where;
    left_ = bytes;
    failed_ = false;
  }
  void Mend() {
    {
      const std::lock_guard lock(mutex_);
      fault_.reset();
      failed_ = false;
      mended_ = true;
    }
    static_cast<void>(write(stop_.Get(), "", 1));
  }
  bool HasFailed() const {
    const std::lock_guard lock(mutex_);
    return failed_;
  }
  void StartMarking() {
    const std::lock_guard lock(mutex_);
    passed_ = 0;
    marks_.clear();
  }
  std::vector<std::int64_t> Marks() const {
    const std::lock_guard lock(mutex_);
    return marks_;
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
    std::optional<Fault> Failed = {};
    bool IsSpared = false;  // until its client speaks
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
      if ((polled[0].revents & POLLHUP) != 0) return;
      if (char byte = 0; polled[0].revents != 0) static_cast<void>(read(stopped_.Get(), &byte, 1));
      std::size_t at = 2;
      FailAndMend();
      for (Connection& each : connections_) {
        const bool client = polled[at++].revents != 0;
        const bool server = polled[at++].revents != 0;
        Serve(each, client, server);
      }
      FailAndMend();
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
    if (connection.Client.Get() < 0) return;
    if (connection.Server.Get() < 0 && connection.There <= Clock::now()) Reach(connection);
    if (client && !connection.Ended) Carry(connection, Connection::Speaker::Client);
    if (server && !connection.Ended) Carry(connection, Connection::Speaker::Server);
    const bool reached = connection.Server.Get() >= 0;
    if (reached && !connection.Up.Write(connection.Server.Get())) return Drop(connection);
    if (!connection.Down.Write(connection.Client.Get())) Drop(connection);
  }

  void Carry(Connection& connection, typename Connection::Speaker who) {
    const bool client = who == Connection::Speaker::Client;
    std::string bytes;
    const auto read = Flow::Read(client ? connection.Client.Get() : connection.Server.Get(), bytes);
    if (read == Flow::Reading::Ended) connection.Ended = true;
    if (read != Flow::Reading::Came) return;
    Speak(connection, who);
    FailAndMend();
    if (connection.Ended) return;
    const auto due = Clock::now() + Delay.load() / 2;
    if (client) {
      Pass(bytes, connection.Failed == Fault::Silent, client);
      connection.Up.Send(std::move(bytes), std::max(due, connection.There));
    } else {
      Pass(bytes, connection.Failed.has_value(), client);
      connection.Down.Send(std::move(bytes), due);
    }
  }

  /// Leaves of the bytes those that arrive.
  void Pass(std::string& bytes, bool lost, bool client) {
    if (lost) return bytes.clear();
    const std::lock_guard lock(mutex_);
    const auto size = static_cast<std::int64_t>(bytes.size());
    passed_ += size;
    if (!fault_ || failed_) return;
    failed_ = left_ < size;
    const bool arrives = client ? *fault_ == Fault::Swallow : where_ == Where::BetweenAnswers;
    if (failed_ && !arrives) bytes.resize(static_cast<std::size_t>(left_));
    left_ -= size;
  }

  /// To all connections alike.
  void FailAndMend() {
    std::optional<Fault> fault;
    Where where = Where::Anywhere;
    bool mended = false;
    {
      const std::lock_guard lock(mutex_);
      if (failed_) fault = fault_;
      where = where_;
      mended = std::exchange(mended_, false);
    }
    for (Connection& each : connections_) {
      if (mended && (each.Failed || each.IsSpared)) Reset(each);
      if (!fault || each.Failed) continue;
      each.IsSpared = where == Where::BetweenAnswers && each.Last == Connection::Speaker::Server;
      if (each.IsSpared) continue;
      each.Failed = fault;
      if (*fault == Fault::Cut) each.Ended = true;
      if (*fault == Fault::Reset) Reset(each);
    }
  }

  static void Reset(Connection& connection) {
    EndByReset(connection.Client.Get());
    EndByReset(connection.Server.Get());
    Drop(connection);
  }

  void Speak(Connection& connection, typename Connection::Speaker who) {
    const bool answers = who == Connection::Speaker::Server && connection.Last != who;
    if (connection.Last != who) {
      const std::lock_guard lock(mutex_);
      marks_.push_back(passed_);
    }
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

  mutable std::mutex mutex_;
  std::optional<Fault> fault_;
  Where where_ = Where::Anywhere;
  std::int64_t left_ = 0;  // bytes until it happens
  bool failed_ = false;    // it happened
  bool mended_ = false;
  std::int64_t passed_ = 0;
  std::vector<std::int64_t> marks_;

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

void Line::FailAfter(std::int64_t bytes, Fault fault, Where where) {
  exchange_->FailAfter(bytes, fault, where);
}

void Line::Mend() {
  exchange_->Mend();
}

bool Line::HasFailed() const {
  return exchange_->HasFailed();
}

void Line::StartMarking() {
  exchange_->StartMarking();
}

std::vector<std::int64_t> Line::Marks() const {
  return exchange_->Marks();
}

}  // namespace ktrv::tests
