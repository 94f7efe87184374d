#include "windows/controls/Band.h"

#include <array>
#include <string>

#include "windows/base/Guard.h"
#include "windows/base/Module.h"
#include "windows/base/WindowClass.h"
#include "windows/controls/FormWindow.h"

namespace ktrv::windows {

namespace {

constexpr wchar_t kClassName[] = L"KTRVAddressBookBand";

LRESULT CALLBACK BandProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const auto answer = Guard<std::optional<LRESULT>>(
      std::nullopt, [&] { return FormWindow::Reflect(message, wParam, lParam); });
  return answer ? *answer : DefWindowProcW(window, message, wParam, lParam);
}

SIZE TextSize(HWND label, HFONT font) {
  std::array<wchar_t, 128> text{};
  const int length = GetWindowTextW(label, text.data(), static_cast<int>(text.size()));
  HDC target = GetDC(label);
  HGDIOBJ former = SelectObject(target, font);
  RECT area{};
  DrawTextW(target, text.data(), length, &area, DT_CALCRECT | DT_SINGLELINE);
  SelectObject(target, former);
  ReleaseDC(label, target);
  return {area.right, area.bottom};
}

}  // namespace

HWND CreateBand(HWND coolBar) {
  static const WindowClass band(kClassName, &BandProcedure,
                                {.Cursor = IDC_ARROW, .Color = COLOR_BTNFACE});
  return CreateWindowExW(WS_EX_CONTROLPARENT, band.Name(), nullptr,
                         WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN, 0, 0, 0, 0,
                         coolBar, nullptr, ThisModule(), nullptr);
}

SIZE LayOutLabelAndBox(HWND label, HWND box, HFONT font, Scale scale, int boxWidth) {
  const SIZE text = TextSize(label, font);
  const int gap = scale.Units(6);
  const int boxHeight = text.cy + scale.Units(8);
  const int width = scale.ToPixels(boxWidth);
  const int height = boxHeight + scale.Units(4);
  const int boxLeft = gap + text.cx + gap;
  MoveWindow(label, gap, (height - text.cy) / 2, text.cx, text.cy, TRUE);
  MoveWindow(box, boxLeft, (height - boxHeight) / 2, width, boxHeight, TRUE);
  return {boxLeft + width + gap, height};
}

}  // namespace ktrv::windows
