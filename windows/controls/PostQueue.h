#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <memory>
#include <mutex>

#include "windows/base/Unique.h"

namespace ktrv::windows {

/// Closures that other threads hand to the thread that made the queue. They run from its message
/// loop, in the order in which they came; when the user does something meanwhile, that goes first.
/// Closures that come after Close, or wait then, are dropped. Shared, because threads may
/// still hold it when its screen is gone.
class PostQueue : public std::enable_shared_from_this<PostQueue> {
 public:
  static std::shared_ptr<PostQueue> Make();

  /// Any thread.
  void Post(std::function<void()> closure);
  /// On the queue's own thread.
  void Close();

 private:
  using Closures = std::deque<std::function<void()>>;

  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  void Drain();
  std::function<void()> Next();
  /// Comes back to the rest: behind the user's input when some waits.
  void Continue();

  std::mutex mutex_;
  Closures closures_;
  HWND target_ = nullptr;  ///< null once closed
  bool announced_ = false;
  UniqueWindow window_;
};

}  // namespace ktrv::windows
