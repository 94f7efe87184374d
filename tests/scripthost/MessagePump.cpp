#include "tests/scripthost/MessagePump.h"

#include <windows.h>

#include <algorithm>

namespace ktrv::scripthost::MessagePump {
namespace {

constexpr ULONGLONG kLookAgain = 20;  // milliseconds; a condition may change without a message

/// Messages that keep coming do not keep the condition from being looked at.
void HandleWaiting() {
  const ULONGLONG end = GetTickCount64() + kLookAgain;
  MSG message;
  while (GetTickCount64() < end && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace

bool RunUntil(const std::function<bool()>& condition, unsigned long milliseconds) {
  const ULONGLONG end = GetTickCount64() + milliseconds;
  for (;;) {
    HandleWaiting();
    if (condition()) {
      return true;
    }
    const ULONGLONG now = GetTickCount64();
    if (now >= end) {
      return false;
    }
    MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(std::min(end - now, kLookAgain)),
                                QS_ALLINPUT, MWMO_INPUTAVAILABLE);
  }
}

}  // namespace ktrv::scripthost::MessagePump
