#pragma once

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <tuple>

#include "tests/line/Book.h"
#include "tests/line/FaultTasks.h"
#include "tests/line/Stopwatch.h"

namespace ktrv::tests {

inline constexpr std::chrono::milliseconds kLimitOfFaults{300};

/// Whether all faults are tried, or a sample of them.
bool TriesAllFaults();

/// A user at a book on whom faults come, and what is to be said of it in the end.
class FaultFixture : public testing::TestWithParam<std::tuple<ServerKind, std::size_t>> {
 protected:
  /// \param port of the server, if it is not the one that all tests share
  explicit FaultFixture(std::optional<std::uint16_t> port = {},
                        std::chrono::milliseconds limit = kLimitOfFaults);
  ~FaultFixture() override;

  static ServerKind Kind() { return std::get<0>(GetParam()); }
  static std::size_t TaskNumber() { return std::get<1>(GetParam()); }
  static const FaultTask& Task() { return FaultTasks()[TaskNumber()]; }

  /// So long that links count as idle.
  static void Think();
  /// Does it without a fault. \throws std::runtime_error
  void DoSurely(const std::function<void()>& action);
  /// What goes before the task.
  void Prepare();
  /// The task while the fault lasts.
  void Suffer();
  /// The task when the fault is over, unless it was done before; then the look at what is stored.
  void Recover();
  /// Adds to the failure of the last task.
  void Complain(const std::string& text) { wrong_ += text + "; "; }
  bool WasConfirmed() const { return confirmed_; }
  /// Tells what was wrong with the task. \param fault its name
  void Judge(const std::string& fault, bool happened);
  void Report(const std::string& kind) const;

  Book book;
  std::optional<Stopwatch> watch;
  std::optional<Host> host;
  database::Connection direct{book.Database.Surroundings()};
  int number = 0;  ///< of the task

 private:
  bool Attempt();
  /// Whether the last attempt ended at a limit, as it does when the machine is slower than that.
  bool RanOutOfTime() const;
  bool IsMachineSlow();

  bool confirmed_ = false;
  std::string refusal_;  ///< of the last attempt
  std::string wrong_;
  int tried_ = 0;
  int happened_ = 0;
  int refused_ = 0;
  int again_ = 0;
  int red_ = 0;
  std::chrono::milliseconds longest_{};
  /// A call may ask whether a kept link answers, and then open another; each has as long again to
  /// be cancelled, and the machine does much else.
  const std::chrono::milliseconds longestCall_;
};

/// Of each task on each engine.
inline auto EachTask() {
  return testing::Combine(testing::Values(ServerKind::MariaDb, ServerKind::PostgreSql),
                          testing::Range<std::size_t>(0, FaultTasks().size()));
}
std::string NameOfTask(const testing::TestParamInfo<std::tuple<ServerKind, std::size_t>>& each);

}  // namespace ktrv::tests
