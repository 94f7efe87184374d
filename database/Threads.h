#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

namespace ktrv::database {

/// Set to true when a thread has finished and destroyed everything it owned.
using EndFlag = std::shared_ptr<std::atomic<bool>>;

/// The threads that the component has started in this process. They are never detached: the
/// statically linked thread library confuses a thread that ends while it is being detached with the
/// next one, which then never runs. Finished threads are joined by later calls.
class Threads {
 public:
  /// Never destroyed, because its destructor could not join threads that were killed at process
  /// exit.
  static Threads& OfProcess();

  /// Sets the flag when it is destroyed. Must be destroyed last of all that the thread owns.
  class EndMark {
   public:
    explicit EndMark(EndFlag ended) : ended_(std::move(ended)) {}
    ~EndMark() {
      if (ended_) *ended_ = true;
    }
    EndMark(EndMark&&) noexcept = default;

   private:
    EndFlag ended_;
  };

  /// \param work must own an EndMark for the flag. \throws std::system_error, std::bad_alloc
  template <class Work>
  void Start(Work work, EndFlag ended) {
    const std::lock_guard lock(mutex_);
    JoinEnded();
    threads_.push_back({{}, std::move(ended)});
    try {
      threads_.back().Thread = std::thread(std::move(work));
    } catch (...) {
      threads_.pop_back();
      throw;
    }
  }

  /// Joins the thread with this flag, if it has not been joined yet.
  void Join(const EndFlag& ended) noexcept;

  std::size_t Count();

 private:
  struct Entry {
    std::thread Thread;
    EndFlag Ended;
  };

  void JoinEnded();

  std::mutex mutex_;
  std::list<Entry> threads_;
};

}  // namespace ktrv::database
