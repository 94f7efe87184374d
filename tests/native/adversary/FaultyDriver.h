#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "database/Driver.h"

namespace ktrv::tests {

/// The ways in which a call of the driver can go wrong.
enum class Fault {
  ThrowsBefore,   ///< fails and has done nothing
  ThrowsAfter,    ///< does its work, then fails
  NothingOpened,  ///< an open gives no session and no reason
  LinkDies,       ///< this link is dead from here on
  ServerGoes,     ///< every link is dead, and none can be opened until the server is back
  Hangs,          ///< until cancelled; where nobody can cancel, until the driver's own limit
  CancelHangs,    ///< hangs, and so does its cancel for a while
  CountUnknown,   ///< the driver cannot tell how many rows were changed
  RowMissed,      ///< an update finds no row, and the driver cannot tell so
  IdUnknown,      ///< the driver cannot tell the new row's id, or the table's key, this once
  IdNeverKnown,   ///< nor can it ever
  OutOfMemory,
  Foreign,  ///< throws something that is no exception
};
const char* NameOf(Fault fault);

/// One call of the driver within a task. Calls are known by what they are about and not by when
/// they came, because fetches run beside the user's thread.
struct DriverCall {
  std::string What;             ///< the operation and the text that it is about
  int Which = 0;                ///< the first such call of the task is 1
  bool CanBeCancelled = false;  ///< a fetch's, beside the user's thread

  std::string Name() const { return What + " #" + std::to_string(Which); }
};

/// A driver over another one that counts its calls and lets a chosen one go wrong.
///
///   FaultyDriver faulty(driver);
///   ... a task; faulty.Calls() are what it called ...
///   faulty.Arm(call, Fault::LinkDies);
///   ... the same task again; faulty.Fired() tells whether it came to that call ...
///   faulty.Heal();
class FaultyDriver final : public database::Driver {
 public:
  /// \param driver does the work; must outlive this one and its links.
  explicit FaultyDriver(database::Driver& driver) : driver_(driver) {}

  /// Counts the calls from here on; what came before goes well. No effect a second time.
  void StartCounting() { counting_ = true; }
  std::vector<DriverCall> Calls() const;
  /// The faults that this call can have.
  static std::vector<Fault> FaultsOf(const DriverCall& call);

  void Arm(DriverCall call, Fault fault);
  /// Lets the n-th call of the user's thread from here on fail. \param way selects one of the
  /// faults that the call can have
  void ArmAny(int call, unsigned way);
  bool Fired() const { return fired_; }
  /// The trouble is over: the server is back, and what hangs fails.
  void Heal();
  /// Whether a statement hangs now.
  bool IsHanging() const { return hanging_ > 0; }

  /// \param act called before each statement that is counted, with its text, on the thread that
  /// executes it, by one thread at a time; null for none. Waits while the former one runs.
  void BeforeExecute(std::function<void(StringView text)> act);
  /// No statement ever tells its count.
  bool CountsNothing = false;

  int LinksAlive() const { return linksAlive_; }
  int StatementsAlive() const { return statementsAlive_; }

  std::unique_ptr<database::Link> Open(StringView connectionString, StringView user,
                                       StringView password) override;

 private:
  class FaultyLink;
  class FaultyStatement;

  bool IsUserThread() const { return std::this_thread::get_id() == user_; }
  /// Counts the call. \return the fault that it is to have
  std::optional<Fault> Come(StringView operation, StringView text);
  /// Fails as the fault says when it is one that comes before the work.
  void Before(std::optional<Fault> fault, std::atomic<bool>* linkIsDead);
  void After(std::optional<Fault> fault);
  void CheckServer();
  void Hang(const std::atomic<bool>& cancelled);

  database::Driver& driver_;
  const std::thread::id user_ = std::this_thread::get_id();
  mutable std::mutex mutex_;
  std::condition_variable healed_;
  std::mutex actMutex_;
  std::function<void(StringView text)> act_;
  struct Count {
    int Came = 0;
    bool CanBeCancelled = false;
  };
  std::map<std::string, Count> calls_;
  std::atomic<bool> counting_ = false;
  std::optional<DriverCall> armed_;
  int callsToCome_ = 0;  ///< until the one of ArmAny; 0 for none
  unsigned way_ = 0;
  Fault fault_ = Fault::ThrowsBefore;
  std::atomic<bool> healing_ = false;
  std::atomic<bool> fired_ = false;
  std::atomic<bool> serverIsGone_ = false;
  std::atomic<bool> idNeverKnown_ = false;
  std::atomic<int> hanging_ = 0;
  std::atomic<int> linksAlive_ = 0;
  std::atomic<int> statementsAlive_ = 0;
};

}  // namespace ktrv::tests
