#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>

namespace ktrv::tests {

/// Stands for the user-interface thread: keeps the closures that are posted to it until the test
/// runs them.
///
///   TestDispatcher dispatcher;
///   Environment environment{[&](StringView) -> Driver& { return driver; }, dispatcher.Post()};
///   ... recordset.Open(text, u"", {.Async = true});
///   ASSERT_TRUE(dispatcher.RunUntil([&] { return complete; }));
///
/// Declare it behind the driver: its end waits for the fetches that still run.
class TestDispatcher {
 public:
  TestDispatcher();
  ~TestDispatcher();
  TestDispatcher(const TestDispatcher&) = delete;
  TestDispatcher& operator=(const TestDispatcher&) = delete;

  /// What goes into Environment::Post. Closures that come after the dispatcher is gone are dropped.
  std::function<void(std::function<void()>)> Post();

  /// Runs closures as they come until the condition holds. \return false when it does not within
  /// the time.
  bool RunUntil(const std::function<bool()>& condition,
                std::chrono::milliseconds limit = std::chrono::seconds(20));

  /// Runs what waits now, and what that posts. \return how many closures ran.
  std::size_t RunWaiting();

  std::size_t Waiting() const;

 private:
  struct Queue;
  bool RunOne();
  std::shared_ptr<Queue> queue_;
};

/// Waits until no fetch runs in this process. \return false when one still does after the time.
bool WaitForFetches(std::chrono::milliseconds limit = std::chrono::seconds(20));

}  // namespace ktrv::tests
