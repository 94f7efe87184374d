#include "windows/controls/Scale.h"

#include <cstdlib>

namespace ktrv::windows {

namespace {

// Functions of Windows 10. Before, all windows had the system DPI.
template <class Function>
Function* User32(const char* name) {
  return reinterpret_cast<Function*>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32"), name)));
}

int SystemDpi() {
  HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return dpi;
}

/// The message font at system DPI.
LOGFONTW SystemMessageFont() {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  return metrics.lfMessageFont;
}

}  // namespace

Scale Scale::At(int dpi) {
  return Scale(dpi, MulDiv(std::abs(SystemMessageFont().lfHeight), 96, SystemDpi()));
}

Scale Scale::Of(HWND window) {
  if (auto* dpiForWindow = User32<UINT WINAPI(HWND)>("GetDpiForWindow")) {
    if (const UINT dpi = dpiForWindow(window)) return At(static_cast<int>(dpi));
  }
  return At(SystemDpi());
}

RECT Scale::ToPixels(const controls::Rectangle& bounds) const {
  return {ToPixels(bounds.Left), ToPixels(bounds.Top), ToPixels(bounds.Left + bounds.Width),
          ToPixels(bounds.Top + bounds.Height)};
}

controls::Rectangle Scale::ToTwips(const RECT& bounds) const {
  return {ToTwips(bounds.left), ToTwips(bounds.top), ToTwips(bounds.right - bounds.left),
          ToTwips(bounds.bottom - bounds.top)};
}

SIZE Scale::Outer(SIZE inner, DWORD style, DWORD exStyle) const {
  RECT frame{0, 0, inner.cx, inner.cy};
  if (auto* adjust =
          User32<BOOL WINAPI(RECT*, DWORD, BOOL, DWORD, UINT)>("AdjustWindowRectExForDpi")) {
    adjust(&frame, style, FALSE, exStyle, static_cast<UINT>(dpi_));
  } else {
    AdjustWindowRectEx(&frame, style, FALSE, exStyle);
  }
  return {frame.right - frame.left, frame.bottom - frame.top};
}

UniqueFont MessageFont(Scale scale) {
  // Scales from the system DPI to the DPI of the monitor.
  LOGFONTW font = SystemMessageFont();
  font.lfHeight = MulDiv(font.lfHeight, scale.Dpi(), SystemDpi());
  return UniqueFont(CreateFontIndirectW(&font));
}

}  // namespace ktrv::windows
