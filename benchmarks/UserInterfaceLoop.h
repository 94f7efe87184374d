#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace ktrv::benchmarks {

using Clock = std::chrono::steady_clock;

inline double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

/// A message loop for the user-interface thread that measures each closure it runs.
class UserInterfaceLoop {
 public:
  std::function<void(std::function<void()>)> Post();

  /// Runs posted closures until the condition is true.
  void RunUntil(const std::function<bool()>& condition);

  double LongestClosure() const { return longest_; }  ///< seconds

 private:
  struct Queue {
    std::mutex mutex;
    std::condition_variable came;
    std::deque<std::function<void()>> closures;
  };
  std::shared_ptr<Queue> queue_ = std::make_shared<Queue>();
  double longest_ = 0;
};

}  // namespace ktrv::benchmarks
