#include "windows/controls/FrameWindow.h"

namespace ktrv::windows {

FrameWindow::FrameWindow(FormWindow& form, controls::Frame& control) : Peer(form, control) {
  Create(WC_BUTTONW, BS_GROUPBOX);
  ShowText(control.Caption());
}

void FrameWindow::OnFormRealised() {
  // What stands in the frame was made after it, and so lies under it and would not be seen.
  SetWindowPos(Handle(), HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

std::optional<LRESULT> FrameWindow::OnMessage(UINT message, WPARAM wParam, LPARAM) {
  if (message != WM_ERASEBKGND) return std::nullopt;
  // A group box leaves its inside to its parent, which does not paint behind its children.
  RECT inside{};
  GetClientRect(Handle(), &inside);
  FillRect(reinterpret_cast<HDC>(wParam), &inside, GetSysColorBrush(COLOR_BTNFACE));
  return TRUE;
}

}  // namespace ktrv::windows
