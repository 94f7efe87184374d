#include "database/LimitedCalls.h"

#include <algorithm>
#include <condition_variable>
#include <utility>

#include "database/Threads.h"

namespace ktrv::database {
namespace {

constexpr std::chrono::milliseconds kLongestMoment{1000};  // for a cancelled call to return

}  // namespace

/// One thread, which runs one call at a time.
class LimitedCalls::Worker : public std::enable_shared_from_this<Worker> {
 public:
  void Start() {
    Threads::OfProcess().Start(
        [mark = Threads::EndMark(state_), self = shared_from_this()]() mutable {
          self->Serve();
          self.reset();
        },
        state_);
  }

  void Begin(std::function<void()> work) {
    const std::lock_guard lock(mutex_);
    work_.swap(work);
    done_ = false;
    changed_.notify_all();
  }

  bool WaitFor(std::chrono::milliseconds limit) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, limit, [this] { return done_; });
  }

  /// \return true if the work is done; otherwise the thread ends after it.
  bool GiveUp() {
    const std::lock_guard lock(mutex_);
    if (done_) return true;
    state_->GivenUp = ThreadState::Clock::now();
    stopped_ = true;
    return false;
  }

  /// Ends the idle thread.
  void End() noexcept {
    {
      const std::lock_guard lock(mutex_);
      stopped_ = true;
      changed_.notify_all();
    }
    Threads::OfProcess().Join(state_);
  }

 private:
  void Serve() {
    std::unique_lock lock(mutex_);
    for (;;) {
      changed_.wait(lock, [this] { return work_ || stopped_; });
      if (!work_) return;
      lock.unlock();
      work_();
      work_ = nullptr;  // also destroys what it owns
      lock.lock();
      done_ = true;
      changed_.notify_all();
    }
  }

  const std::shared_ptr<ThreadState> state_ = std::make_shared<ThreadState>();
  std::mutex mutex_;
  std::condition_variable changed_;
  std::function<void()> work_;  // used by the thread only, until done_
  bool done_ = true;
  bool stopped_ = false;
};

bool LimitedCalls::Run(std::function<void()> work, std::chrono::milliseconds limit,
                       const std::function<void()>& late) {
  const auto worker = Take();
  worker->Begin(std::move(work));
  bool done = worker->WaitFor(limit);
  if (!done && late) {
    late();
    done = worker->WaitFor(std::min(limit, kLongestMoment));
  }
  if (!done && !worker->GiveUp()) return false;
  {
    const std::lock_guard lock(mutex_);
    if (keeps_) {
      idle_.push_back(worker);
      return true;
    }
  }
  worker->End();
  return true;
}

std::shared_ptr<LimitedCalls::Worker> LimitedCalls::Take() {
  {
    const std::lock_guard lock(mutex_);
    if (!idle_.empty()) {
      auto worker = std::move(idle_.back());
      idle_.pop_back();
      return worker;
    }
  }
  Threads::OfProcess().PassUnlessManyHang();
  auto worker = std::make_shared<Worker>();
  worker->Start();
  return worker;
}

void LimitedCalls::KeepIdle() {
  const std::lock_guard lock(mutex_);
  keeps_ = true;
}

void LimitedCalls::EndIdle() noexcept {
  std::list<std::shared_ptr<Worker>> ended;
  {
    const std::lock_guard lock(mutex_);
    keeps_ = false;
    ended.swap(idle_);
  }
  for (const auto& worker : ended) worker->End();
}

}  // namespace ktrv::database
