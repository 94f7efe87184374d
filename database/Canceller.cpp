#include "database/Canceller.h"

#include <chrono>

namespace ktrv::database {
namespace {

constexpr std::chrono::milliseconds kFirstWait{100};
constexpr int kMostCancels = 8;  // at intervals that double: some 25 seconds

}  // namespace

void Canceller::Begin(Statement& statement) {
  const std::lock_guard lock(mutex_);
  statement_ = &statement;
}

void Canceller::End() {
  std::unique_lock lock(mutex_);
  statement_ = nullptr;
  changed_.notify_all();
  changed_.wait(lock, [this] { return cancelling_ == 0; });
}

void Canceller::StartThread() {
  auto state = std::make_shared<ThreadState>();
  Threads::OfProcess().Start(
      [mark = Threads::EndMark(state), self = shared_from_this()]() mutable {
        self->Run();
        self.reset();  // before the end mark, after which the driver may be destroyed
      },
      state);
}

void Canceller::Tell() noexcept {
  const std::lock_guard lock(mutex_);
  told_ = true;
  changed_.notify_all();
}

void Canceller::Cancel() noexcept {
  std::unique_lock lock(mutex_);
  if (statement_) CancelOnce(lock);
}

void Canceller::Run() noexcept {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return told_ || !statement_; });
  auto patience = kFirstWait;
  for (int tries = 0; tries < kMostCancels && statement_; ++tries) {
    CancelOnce(lock);
    changed_.wait_for(lock, patience, [this] { return !statement_; });
    patience *= 2;
  }
}

void Canceller::CancelOnce(std::unique_lock<std::mutex>& lock) noexcept {
  ++cancelling_;
  Statement& statement = *statement_;
  lock.unlock();
  statement.Cancel();
  lock.lock();
  --cancelling_;
  changed_.notify_all();
}

}  // namespace ktrv::database
