#pragma once

namespace ktrv::windows {

/// Marks on the stack that the host or the operating system is calling the component on this
/// thread: a COM method or a window event. Entries nest. A modal dialog and its message loop run
/// inside one.
class Entry {
 public:
  Entry() noexcept { ++Depth(); }
  ~Entry() {
    if (--Depth() == 0) RunWaiting();
  }
  Entry(const Entry&) = delete;
  Entry& operator=(const Entry&) = delete;

  static bool IsInside() noexcept { return Depth() > 0; }
  /// Runs the action when the outermost entry of this thread ends. Only one action can be queued.
  /// \return false if one is already queued
  static bool WhenLeft(void (*action)(void* subject) noexcept, void* subject) noexcept;

 private:
  static int& Depth() noexcept;
  static void RunWaiting() noexcept;
};

}  // namespace ktrv::windows
