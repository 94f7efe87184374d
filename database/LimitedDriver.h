#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <set>

#include "database/Driver.h"
#include "database/TimeLimits.h"

namespace ktrv::database {

class LimitedCalls;

/// Decorates a driver with time limits. A call that exceeds its limit is cancelled and fails as a
/// time-out. If it does not return even then, it is abandoned together with its link, which is
/// closed when the call returns. Links to files are not decorated.
class LimitedDriver final : public Driver {
 public:
  /// \param driver must outlive this driver, its links and the abandoned calls. \param limitsOf
  /// gives the limits for a connection string
  LimitedDriver(Driver& driver, std::function<TimeLimits(StringView)> limitsOf);
  ~LimitedDriver() override;
  LimitedDriver(const LimitedDriver&) = delete;
  LimitedDriver& operator=(const LimitedDriver&) = delete;

  std::unique_ptr<Link> Open(StringView connectionString, StringView user,
                             StringView password) override;

  /// Ends idle threads; none are kept until the next Open.
  void EndIdle() noexcept;

 private:
  bool IsFile(const String& connectionString);

  Driver& driver_;
  const std::function<TimeLimits(StringView)> limitsOf_;
  const std::shared_ptr<LimitedCalls> calls_;
  std::mutex mutex_;
  std::set<String> files_;  // connection strings of files opened so far
};

}  // namespace ktrv::database
