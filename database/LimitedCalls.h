#pragma once

#include <chrono>
#include <functional>
#include <list>
#include <memory>
#include <mutex>

namespace ktrv::database {

/// Runs calls that may not return on separate threads, so that the caller can abandon them.
/// Thread-safe.
class LimitedCalls {
 public:
  ~LimitedCalls() { EndIdle(); }
  LimitedCalls() = default;
  LimitedCalls(const LimitedCalls&) = delete;
  LimitedCalls& operator=(const LimitedCalls&) = delete;

  /// Runs the work and waits for it up to the limit. \param work must not throw, and must own or
  /// share everything it uses. \param late called at the limit; then the work gets up to a second
  /// more. \return false if the work is still running; it is abandoned. \throws Error if too many
  /// abandoned calls are running, std::system_error, std::bad_alloc; the work was not started
  bool Run(std::function<void()> work, std::chrono::milliseconds limit,
           const std::function<void()>& late = {});

  /// Keeps idle threads for later calls, until EndIdle.
  void KeepIdle();
  void EndIdle() noexcept;

 private:
  class Worker;
  std::shared_ptr<Worker> Take();

  std::mutex mutex_;
  bool keeps_ = false;
  std::list<std::shared_ptr<Worker>> idle_;
};

}  // namespace ktrv::database
