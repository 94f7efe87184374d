#include "benchmarks/UserInterfaceLoop.h"

#include <algorithm>
#include <utility>

namespace ktrv::benchmarks {

std::function<void(std::function<void()>)> UserInterfaceLoop::Post() {
  return [queue = queue_](std::function<void()> closure) {
    const std::lock_guard lock(queue->mutex);
    queue->closures.push_back(std::move(closure));
    queue->came.notify_one();
  };
}

void UserInterfaceLoop::RunUntil(const std::function<bool()>& condition) {
  while (!condition()) {
    std::function<void()> closure;
    {
      std::unique_lock lock(queue_->mutex);
      queue_->came.wait(lock, [&] { return !queue_->closures.empty(); });
      closure = std::move(queue_->closures.front());
      queue_->closures.pop_front();
    }
    const auto start = Clock::now();
    closure();
    longest_ = std::max(longest_, SecondsSince(start));
  }
}

}  // namespace ktrv::benchmarks
