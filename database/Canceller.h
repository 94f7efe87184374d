#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>

#include "database/Driver.h"
#include "database/Threads.h"

namespace ktrv::database {

/// Cancels a statement on a separate thread: a driver's cancel may block, because it opens a new
/// connection or waits for the statement.
class Canceller : public std::enable_shared_from_this<Canceller> {
 public:
  /// Sets the statement to cancel.
  void Begin(Statement& statement);
  /// Must be called before the statement is destroyed. Waits for a running cancel.
  void End();

  /// Starts the thread. It waits for Tell, and ends with End. \throws std::system_error,
  /// std::bad_alloc
  void StartThread();
  /// Makes the thread cancel. Does not block. The thread repeats the cancel a few times at doubling
  /// intervals, because engines ignore a cancel that arrives before the statement.
  void Tell() noexcept;

  /// Cancels once on the calling thread. No effect after End.
  void Cancel() noexcept;

 private:
  void Run() noexcept;
  void CancelOnce(std::unique_lock<std::mutex>& lock) noexcept;

  std::mutex mutex_;
  std::condition_variable changed_;
  Statement* statement_ = nullptr;
  int cancelling_ = 0;  // running calls of its Cancel
  bool told_ = false;
};

}  // namespace ktrv::database
