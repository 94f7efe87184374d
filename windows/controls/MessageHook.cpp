#include "windows/controls/MessageHook.h"

#include "windows/base/Guard.h"
#include "windows/controls/FormWindow.h"
#include "windows/controls/Keys.h"

namespace ktrv::windows {

namespace {

/// Queries which keys the focused control handles itself.
LRESULT CodeOf(MSG& message) {
  return SendMessageW(message.hwnd, WM_GETDLGCODE, message.wParam,
                      reinterpret_cast<LPARAM>(&message));
}

bool TakeKeyDown(HWND form, MSG& message) {
  const LRESULT wants = CodeOf(message);
  if (wants & DLGC_WANTMESSAGE) return false;
  switch (message.wParam) {
    case VK_TAB:
      if (wants & DLGC_WANTTAB || GetKeyState(VK_CONTROL) < 0) return false;
      SendMessageW(form, WM_NEXTDLGCTL, GetKeyState(VK_SHIFT) < 0, FALSE);
      return true;
    // Posted, because the command may open a dialog, and no message loop may run inside the hook.
    // An auto-repeat of a key held down since the previous window is ignored.
    case VK_RETURN:
      if (!IsRepeated(message.lParam)) PostMessageW(form, WM_COMMAND, IDOK, 0);
      return true;
    case VK_ESCAPE:
      if (!IsRepeated(message.lParam)) PostMessageW(form, WM_COMMAND, IDCANCEL, 0);
      return true;
    default:
      return false;
  }
}

bool TakeMessage(MSG& message) {
  HWND form = message.hwnd ? GetAncestor(message.hwnd, GA_ROOT) : nullptr;
  FormWindow* owner = FormWindow::From(form);
  if (!owner) return false;
  // A disabled window still gets keys while it is active, or if it was disabled after key-down.
  if (!IsWindowEnabled(form)) {
    return message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
  }
  if (owner->IsWorking()) return owner->TakeKeyWhileWorking(message);
  switch (message.message) {
    case WM_KEYDOWN:
      return owner->TakeShortcut(message) || TakeKeyDown(form, message);
    case WM_SYSKEYDOWN:
      return owner->TakeShortcut(message);
    case WM_SYSCHAR:
      // A key that is held down presses a button once. Other letters are left to the system menu.
      return IsRepeated(message.lParam) ||
             owner->TakeMnemonic(static_cast<wchar_t>(message.wParam));
    default:
      return false;
  }
}

}  // namespace

MessageHook::MessageHook()
    : hook_(SetWindowsHookExW(WH_GETMESSAGE, &Procedure, nullptr, GetCurrentThreadId())) {}

LRESULT CALLBACK MessageHook::Procedure(int code, WPARAM wParam, LPARAM lParam) {
  return Guard<LRESULT>(0, [&] {
    auto& message = *reinterpret_cast<MSG*>(lParam);
    // With PM_NOREMOVE the message will come again.
    if (code == HC_ACTION && wParam == PM_REMOVE && TakeMessage(message)) {
      message.message = WM_NULL;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
  });
}

}  // namespace ktrv::windows
