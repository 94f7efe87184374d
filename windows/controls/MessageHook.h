#pragma once

#include <windows.h>

#include "windows/base/Unique.h"

namespace ktrv::windows {

/// Makes Tab, Alt with a letter, Enter and Escape work in our forms although the host hands its
/// messages out without knowing them for dialogs. It watches the messages that this thread reads
/// and takes those keys of our forms that the control with the focus does not want for itself.
class MessageHook {
 public:
  MessageHook();

 private:
  static LRESULT CALLBACK Procedure(int code, WPARAM wParam, LPARAM lParam);

  UniqueHook hook_;
};

}  // namespace ktrv::windows
