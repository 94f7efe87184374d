// The size, the place and the resolution of FormWindow.
#include <algorithm>

#include "windows/controls/ControlWindow.h"
#include "windows/controls/FormWindow.h"

namespace ktrv::windows {

DWORD FormWindow::Style() const {
  const DWORD resizable = WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
  return WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN | (form_.Layout().Resizable ? resizable : 0U);
}

DWORD FormWindow::ExStyle() const {
  return WS_EX_CONTROLPARENT | (form_.Layout().Resizable ? 0U : WS_EX_DLGMODALFRAME);
}

SIZE FormWindow::InnerSize() const {
  RECT inner{};
  GetClientRect(handle_, &inner);
  return {inner.right, inner.bottom};
}

void FormWindow::SizeChanged() {
  const SIZE inner{scale_.ToPixels(form_.ScaleWidth()), scale_.ToPixels(form_.ScaleHeight())};
  const SIZE outer = scale_.Outer(inner, Style(), ExStyle());
  SetWindowPos(handle_, nullptr, 0, 0, outer.cx, outer.cy,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormWindow::LimitSize(MINMAXINFO& limits) const {
  const auto& layout = form_.Layout();
  const SIZE inner{scale_.ToPixels(layout.MinimumWidth), scale_.ToPixels(layout.MinimumHeight)};
  const SIZE outer = scale_.Outer(inner, Style(), ExStyle());
  if (inner.cx > 0) limits.ptMinTrackSize.x = outer.cx;
  if (inner.cy > 0) limits.ptMinTrackSize.y = outer.cy;
}

void FormWindow::OnSize(WPARAM kind) {
  if (kind == SIZE_MINIMIZED) return;
  for (ControlWindow* window : windows_) window->OnFormResized();
  const SIZE inner = InnerSize();
  // The form's own size in whole pixels is no change of it.
  if (inner.cx == scale_.ToPixels(form_.ScaleWidth()) &&
      inner.cy == scale_.ToPixels(form_.ScaleHeight())) {
    return;
  }
  form_.UserResizes(scale_.ToTwips(inner.cx), scale_.ToTwips(inner.cy));
}

void FormWindow::OnScaleChanged(int dpi, const RECT& place) {
  scale_ = Scale::At(dpi);
  UniqueFont former = std::exchange(font_, MessageFont(scale_));
  RenewIcons();
  for (ControlWindow* window : windows_) window->ApplyScale();
  SetWindowPos(handle_, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
  for (ControlWindow* window : windows_) window->OnFormResized();
  RedrawWindow(handle_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void FormWindow::CenterOnMonitor() {
  HWND active = GetActiveWindow();
  HMONITOR monitor = MonitorFromWindow(active ? active : handle_, MONITOR_DEFAULTTOPRIMARY);
  MONITORINFO info{};
  info.cbSize = sizeof info;
  if (!GetMonitorInfoW(monitor, &info)) return;
  const RECT& work = info.rcWork;
  RECT window{};
  GetWindowRect(handle_, &window);
  const LONG width = std::min(window.right - window.left, work.right - work.left);
  const LONG height = std::min(window.bottom - window.top, work.bottom - work.top);
  SetWindowPos(handle_, nullptr, work.left + (work.right - work.left - width) / 2,
               work.top + (work.bottom - work.top - height) / 2, width, height,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormWindow::RenewIcons() {
  const UniqueIcon small =
      std::exchange(smallIcon_, DrawIcon(controls::Image::SharedContacts, scale_.Units(16)));
  const UniqueIcon large =
      std::exchange(largeIcon_, DrawIcon(controls::Image::SharedContacts, scale_.Units(32)));
  SendMessageW(handle_, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(smallIcon_.Get()));
  SendMessageW(handle_, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(largeIcon_.Get()));
}

}  // namespace ktrv::windows
