#pragma once

namespace ktrv::windows {

/// Lives while the component runs something that the host or the operating system called on this
/// thread: a COM method, an event of a window. Entries nest; what is shown modally, and the message
/// loop with it, is inside one.
class Entry {
 public:
  Entry() noexcept { ++Depth(); }
  ~Entry() {
    if (--Depth() == 0) RunWaiting();
  }
  Entry(const Entry&) = delete;
  Entry& operator=(const Entry&) = delete;

  static bool IsInside() noexcept { return Depth() > 0; }
  /// Runs the action when the outermost entry of this thread has ended. One may wait at a time.
  /// \return false, and nothing waits, when one waits already
  static bool WhenLeft(void (*action)(void* subject) noexcept, void* subject) noexcept;

 private:
  static int& Depth() noexcept;
  static void RunWaiting() noexcept;
};

}  // namespace ktrv::windows
