// The focus and the keys of FormWindow.
#include <algorithm>
#include <array>

#include "controls/CommandButton.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/FormWindow.h"
#include "windows/controls/Keys.h"

namespace ktrv::windows {

namespace {

wchar_t Capital(wchar_t letter) {
  CharUpperBuffW(&letter, 1);
  return letter;
}

/// The capital of the letter behind the "&" in a window's text; 0 when there is none.
wchar_t MnemonicOf(HWND window) {
  std::array<wchar_t, 128> text{};
  GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
  for (std::size_t i = 0; text[i] && text[i + 1]; ++i) {
    if (text[i] != L'&') continue;
    if (text[i + 1] != L'&') return Capital(text[i + 1]);
    ++i;  // two of them are the character itself
  }
  return 0;
}

}  // namespace

void FormWindow::Focus(HWND control) {
  focus_ = control;
  if (IsWindowVisible(handle_) && IsWindowEnabled(handle_)) SetFocus(control);
}

void FormWindow::FocusNext(bool backward) {
  HWND next = GetNextDlgTabItem(handle_, GetFocus(), backward);
  if (!next) return;
  if (SendMessageW(next, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL)
    SendMessageW(next, EM_SETSEL, 0, -1);
  SetFocus(next);
}

bool FormWindow::TakeMnemonic(wchar_t letter) {
  const auto canBeUsed = [](HWND control) {
    return IsWindowVisible(control) && IsWindowEnabled(control);
  };
  for (auto window = windows_.begin(); window != windows_.end(); ++window) {
    HWND control = (*window)->Handle();
    if (!canBeUsed(control) || MnemonicOf(control) != Capital(letter)) continue;
    const LRESULT kind = SendMessageW(control, WM_GETDLGCODE, 0, 0);
    if (kind & (DLGC_BUTTON | DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) {
      SetFocus(control);
      PostMessageW(control, BM_CLICK, 0, 0);
      return true;
    }
    if (!(kind & DLGC_STATIC)) continue;
    // A label names the control made after it, which may lie in another window: a cool bar's band.
    const auto named = std::find_if(window + 1, windows_.end(), [&](const ControlWindow* next) {
      return canBeUsed(next->Handle()) && GetWindowLongPtrW(next->Handle(), GWL_STYLE) & WS_TABSTOP;
    });
    if (named != windows_.end()) SetFocus((*named)->Handle());
    return true;
  }
  return false;
}

void FormWindow::PressButtonOf(WORD command) {
  // The key came before something modal was opened, or before the form began to work.
  if (!IsWindowEnabled(handle_) || IsWorking()) return;
  constexpr LRESULT kPushButton = DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON;
  HWND focus = GetFocus();
  if (command == IDOK && focus && SendMessageW(focus, WM_GETDLGCODE, 0, 0) & kPushButton) {
    SendMessageW(focus, BM_CLICK, 0, 0);
    return;
  }
  if (command == IDOK) {
    if (ControlWindow* typedIn = ControlWindow::From(focus)) typedIn->FinishTyping();
  }
  for (controls::Control* control : form_.Controls()) {
    auto* button = dynamic_cast<controls::CommandButton*>(control);
    if (!button) continue;
    if ((command == IDOK && button->IsDefault()) || (command == IDCANCEL && button->IsCancel())) {
      button->UserClicks();
      return;
    }
  }
}

bool FormWindow::TakeKeyWhileWorking(const MSG& message) {
  if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
  if (IsRepeated(message.lParam)) return true;
  const bool isEscape = message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE;
  const bool isLetter = message.message == WM_SYSKEYDOWN &&
                        Capital(static_cast<wchar_t>(message.wParam)) == MnemonicOf(StopButton());
  if (isEscape || isLetter) form_.UserStops();
  return true;
}

bool FormWindow::IsLocked(HWND window, UINT message) const {
  if (!IsWorking() || window == StopButton()) return false;
  return (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
         (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) || message == BM_CLICK;
}

HWND FormWindow::StopButton() const {
  for (const ControlWindow* window : windows_) {
    if (&window->Shown() == form_.StopButton()) return window->Handle();
  }
  return nullptr;
}

void FormWindow::TakeInput() {
  // A window that never ends to ask for painting must not keep the work.
  constexpr int kMost = 100;
  MSG message;
  for (int taken = 0; taken < kMost; ++taken) {
    if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_INPUT | PM_QS_PAINT)) return;
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      form_.UserStops();
      return;
    }
    if (message.message == WM_PAINT || (message.hwnd && message.hwnd == StopButton())) {
      DispatchMessageW(&message);
    }
  }
}

void FormWindow::RestoreFocus() {
  HWND control = focus_ && IsWindowVisible(focus_) && IsWindowEnabled(focus_) ? focus_ : nullptr;
  if (!control) control = FirstControl();
  SetFocus(control ? control : handle_);
}

HWND FormWindow::FirstControl() const {
  // Boxes in a cool bar come first in tab order, but the form begins with what lies on itself.
  HWND first = GetNextDlgTabItem(handle_, nullptr, FALSE);
  HWND control = first;
  while (control && GetParent(control) != handle_) {
    control = GetNextDlgTabItem(handle_, control, FALSE);
    if (control == first) break;
  }
  return control;
}

}  // namespace ktrv::windows
