#include "windows/controls/FrameWindow.h"

namespace ktrv::windows {

FrameWindow::FrameWindow(FormWindow& form, controls::Frame& control) : Peer(form, control) {
  Create(WC_BUTTONW, BS_GROUPBOX);
  ShowText(control.Caption());
}

void FrameWindow::OnFormRealised() {
  // The controls inside were created later and are below the frame in z-order; move it to the
  // bottom.
  SetWindowPos(Handle(), HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

std::optional<LRESULT> FrameWindow::OnMessage(UINT message, WPARAM wParam, LPARAM) {
  if (message != WM_ERASEBKGND) return std::nullopt;
  // A group box does not paint its inside, and its parent clips children. So paint it here.
  RECT inside{};
  GetClientRect(Handle(), &inside);
  FillRect(reinterpret_cast<HDC>(wParam), &inside, GetSysColorBrush(COLOR_BTNFACE));
  return TRUE;
}

}  // namespace ktrv::windows
