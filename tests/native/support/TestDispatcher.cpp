#include "tests/native/support/TestDispatcher.h"

#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

#include "database/BackgroundFetch.h"

namespace ktrv::tests {

struct TestDispatcher::Queue {
  std::mutex mutex;
  std::condition_variable came;
  std::deque<std::function<void()>> closures;
};

TestDispatcher::TestDispatcher() : queue_(std::make_shared<Queue>()) {}

TestDispatcher::~TestDispatcher() {
  // A fetch that outlives the driver it runs on would crash a later test instead of this one.
  if (!WaitForFetches()) {
    std::fputs("A fetch still runs at the end of its test\n", stderr);
    std::abort();
  }
}

std::function<void(std::function<void()>)> TestDispatcher::Post() {
  return [weak = std::weak_ptr(queue_)](std::function<void()> closure) {
    if (const auto queue = weak.lock()) {
      const std::lock_guard lock(queue->mutex);
      queue->closures.push_back(std::move(closure));
      queue->came.notify_one();
    }
  };
}

bool TestDispatcher::RunUntil(const std::function<bool()>& condition,
                              std::chrono::milliseconds limit) {
  const auto deadline = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (RunOne()) continue;
    std::unique_lock lock(queue_->mutex);
    // Conditions may also wait for another thread, which wakes nobody here: look again soon.
    queue_->came.wait_for(lock, std::chrono::milliseconds(2),
                          [&] { return !queue_->closures.empty(); });
    if (std::chrono::steady_clock::now() > deadline) return false;
  }
  return true;
}

std::size_t TestDispatcher::RunWaiting() {
  std::size_t ran = 0;
  while (RunOne()) ++ran;
  return ran;
}

std::size_t TestDispatcher::Waiting() const {
  const std::lock_guard lock(queue_->mutex);
  return queue_->closures.size();
}

bool TestDispatcher::RunOne() {
  std::function<void()> closure;
  {
    const std::lock_guard lock(queue_->mutex);
    if (queue_->closures.empty()) return false;
    closure = std::move(queue_->closures.front());
    queue_->closures.pop_front();
  }
  closure();
  return true;
}

bool WaitForFetches(std::chrono::milliseconds limit) {
  const auto deadline = std::chrono::steady_clock::now() + limit;
  while (database::BackgroundFetch::Running() > 0) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

}  // namespace ktrv::tests
