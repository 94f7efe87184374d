#pragma once

#include <windows.h>

namespace ktrv::windows {

/// Keeps the desktop while it exists. Wine takes the desktop away a moment after the last program
/// that used one ended, and a program that starts in that moment can make no window: so this waits
/// until one can be made, at most ten seconds, and holds it.
class Desktop {
 public:
  Desktop();
  ~Desktop();
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;

 private:
  HWND window_ = nullptr;
};

}  // namespace ktrv::windows
