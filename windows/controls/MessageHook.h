#pragma once

#include <windows.h>

#include "windows/base/Unique.h"

namespace ktrv::windows {

/// A WH_GETMESSAGE hook for dialog keys (Tab, access keys, Enter, Escape) in our forms, because the
/// host's message loop does not call IsDialogMessage for them. Handles keys that the focused
/// control does not handle itself.
class MessageHook {
 public:
  MessageHook();

 private:
  static LRESULT CALLBACK Procedure(int code, WPARAM wParam, LPARAM lParam);

  UniqueHook hook_;
};

}  // namespace ktrv::windows
