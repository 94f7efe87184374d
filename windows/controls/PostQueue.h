#pragma once

#include <windows.h>

#include <atomic>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

#include "windows/base/Unique.h"

namespace ktrv::windows {

/// Runs closures posted by any thread on the thread that created the queue, from its message loop,
/// in FIFO order. User input has priority. Pending and later closures are dropped by Close. Shared,
/// because other threads may outlive the screen.
class PostQueue : public std::enable_shared_from_this<PostQueue> {
 public:
  static std::shared_ptr<PostQueue> Make();

  /// Thread-safe.
  void Post(std::function<void()> closure);
  /// Call it on the queue's own thread.
  void Close();

 private:
  using Closures = std::deque<std::function<void()>>;

  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  void Drain();
  std::function<void()> Next();
  /// Schedules the next slice, with lower priority than user input.
  void Continue();

  std::mutex mutex_;
  Closures closures_;
  HWND target_ = nullptr;  ///< null after Close
  /// Whether a message or timer that calls Drain is on its way.
  std::atomic<bool> announced_ = false;
  UniqueWindow window_;
};

}  // namespace ktrv::windows
