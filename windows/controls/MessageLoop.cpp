#include "windows/controls/MessageLoop.h"

#include <windows.h>

namespace ktrv::windows {

bool RunMessages(const std::function<bool()>& done) {
  while (!done()) {
    MSG message;
    const BOOL got = GetMessageW(&message, nullptr, 0, 0);
    if (got == 0) PostQuitMessage(static_cast<int>(message.wParam));
    if (got <= 0) return false;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return true;
}

}  // namespace ktrv::windows
