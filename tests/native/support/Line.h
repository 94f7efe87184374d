#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <vector>

#include "common/Text.h"

namespace ktrv::tests {

/// A line to a server on loopback: a proxy that holds every byte back and counts the turns, which
/// are what a user at the end of a long line waits for.
///
///   Line line(PortOf(ServerKind::MariaDb));
///   connection.Open(line.Through(database.ConnectionString()));
///   line.SetDelay(std::chrono::milliseconds(20));
///   const int before = line.Turns();
///   ... a task; line.Turns() - before is what it took ...
class Line {
 public:
  /// \throws std::runtime_error
  explicit Line(std::uint16_t serverPort);
  ~Line();  ///< Ends the connections that still stand.
  Line(const Line&) = delete;
  Line& operator=(const Line&) = delete;

  /// The connection string with this line's port in place of the server's.
  String Through(StringView connectionString) const;

  /// Time there and back, of what is sent from here on.
  void SetDelay(std::chrono::milliseconds thereAndBack);

  /// How often a client had to wait for the other end: a turn for each connection, and one each
  /// time that the server speaks again after its client has, or greets.
  int Turns() const;
  /// Connections made so far.
  int Connections() const;

  enum class Fault {
    Cut,      ///< both ends see that the other one is gone
    Reset,    ///< both see their connection reset
    Swallow,  ///< what the client says still arrives, and no answer comes
    Silent,   ///< nothing arrives any more
  };
  enum class Where {
    Anywhere,
    BetweenAnswers,  ///< an answer still arrives as a whole: the fault happens to its connection
                     ///< when the client speaks next
  };
  /// So many bytes still arrive; then the fault happens to all connections, and to those that are
  /// made later.
  void FailAfter(std::int64_t bytes, Fault fault, Where where = Where::Anywhere);
  /// Connections that are made from here on work; the others are reset once the fault has happened.
  void Mend();
  /// Whether the fault has happened.
  bool HasFailed() const;

  /// How many bytes had passed each time that an end of a connection began to speak, since
  /// StartMarking.
  std::vector<std::int64_t> Marks() const;
  void StartMarking();

 private:
  class Exchange;
  std::unique_ptr<Exchange> exchange_;
};

}  // namespace ktrv::tests
