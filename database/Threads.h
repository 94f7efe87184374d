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

/// Tells that a thread has done its work, and all that it owned is gone.
using EndFlag = std::shared_ptr<std::atomic<bool>>;

/// The threads of this process that the component started. They are never detached: the thread
/// library that is linked into the DLL mixes up a thread that ends while it is being detached with
/// the next one, which then never runs. Those that have ended are joined in passing.
class Threads {
 public:
  /// Lives for ever: a thread that the end of the process stops must not be missed by a destructor.
  static Threads& OfProcess();

  /// Sets a flag at its own end; what a thread owns has to be gone before.
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

  /// \param work owns an EndMark of the flag. \throws std::system_error, std::bad_alloc
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

  /// Waits for the thread of this flag, if it is still there.
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
