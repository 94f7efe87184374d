#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>

#include "database/Driver.h"
#include "database/Threads.h"

namespace ktrv::database {

/// Cancels a statement from a thread of its own: some drivers connect anew for it, and some wait
/// for the statement, so that nobody who must not wait may cancel one.
class Canceller : public std::enable_shared_from_this<Canceller> {
 public:
  /// The statement is the one to be cancelled from here on.
  void Begin(Statement& statement);
  /// To be called before the statement ends. Waits for a cancel that is under way.
  void End();

  /// The thread that will cancel when it is told to, until End. \throws std::system_error,
  /// std::bad_alloc
  void StartThread();
  /// Tells it; neither waits nor fails. It cancels more than once, because an engine that was told
  /// before it had begun does not remember it, at intervals that double, and ends after a few.
  void Tell() noexcept;

  /// Cancels once, and waits for it. Nothing behind End.
  void Cancel() noexcept;

 private:
  void Run() noexcept;
  void CancelOnce(std::unique_lock<std::mutex>& lock) noexcept;

  std::mutex mutex_;
  std::condition_variable changed_;
  Statement* statement_ = nullptr;
  int cancelling_ = 0;  // calls of its Cancel; the statement must not end
  bool told_ = false;
};

}  // namespace ktrv::database
