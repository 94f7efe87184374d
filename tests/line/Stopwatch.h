#pragma once

#include <chrono>
#include <functional>
#include <thread>

#include "database/Driver.h"

namespace ktrv::tests {

/// Measures the calls of another driver that come from the thread of the test, which is the one of
/// the user interface.
class Stopwatch final : public database::Driver {
 public:
  /// \param driver must outlive this one and its links.
  explicit Stopwatch(database::Driver& driver) : driver_(driver) {}

  std::unique_ptr<database::Link> Open(StringView connectionString, StringView user,
                                       StringView password) override;

  /// The longest call since it was reset.
  std::chrono::milliseconds Longest() const;
  void Reset() { longest_ = {}; }

 private:
  class Measured;
  class MeasuredLink;
  class MeasuredStatement;

  database::Driver& driver_;
  const std::thread::id user_ = std::this_thread::get_id();
  std::chrono::steady_clock::duration longest_{};  // of that thread alone
};

}  // namespace ktrv::tests
