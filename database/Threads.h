#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

namespace ktrv::database {

struct ThreadState {
  using Clock = std::chrono::steady_clock;

  std::atomic<bool> Ended = false;  ///< it has destroyed everything that it owned
  std::atomic<Clock::time_point> GivenUp = Clock::time_point::max();  ///< when it was abandoned
};

/// The threads that the component has started in this process. They are never detached: the
/// statically linked thread library confuses a thread that ends while it is being detached with the
/// next one, which then never runs. Finished threads are joined by later calls.
class Threads {
 public:
  /// Never destroyed, because its destructor could not join threads that were killed at process
  /// exit.
  static Threads& OfProcess();

  /// Sets ThreadState::Ended when destroyed. A thread must destroy everything else that it owns
  /// before.
  class EndMark {
   public:
    explicit EndMark(std::shared_ptr<ThreadState> state) : state_(std::move(state)) {}
    ~EndMark() {
      if (state_) state_->Ended = true;
    }
    EndMark(EndMark&&) noexcept = default;

   private:
    std::shared_ptr<ThreadState> state_;
  };

  /// \param work owns an EndMark of the state. \throws std::system_error, std::bad_alloc
  template <class Work>
  void Start(Work work, std::shared_ptr<ThreadState> state) {
    const std::lock_guard lock(mutex_);
    JoinEnded();
    threads_.push_back({{}, std::move(state)});
    try {
      threads_.back().Thread = std::thread(std::move(work));
    } catch (...) {
      threads_.pop_back();
      throw;
    }
  }

  /// Joins the thread with this state, if it has not been joined yet.
  void Join(const std::shared_ptr<ThreadState>& state) noexcept;

  std::size_t Count();

  /// Call before a call that may hang. \throws Error if too many threads hang: they were
  /// abandoned some time ago and are still running.
  void PassUnlessManyHang();

 private:
  struct Entry {
    std::thread Thread;
    std::shared_ptr<ThreadState> State;
  };

  void JoinEnded();

  std::mutex mutex_;
  std::list<Entry> threads_;
};

}  // namespace ktrv::database
