#include <windows.h>
#include <windowsx.h>

#include "controls/PictureBox.h"
#include "windows/base/Module.h"
#include "windows/base/WindowClass.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/Keys.h"
#include "windows/controls/WindowFactory.h"

namespace ktrv::windows {

using controls::MouseButton;

namespace {

const wchar_t* PlainClass() {
  static const WindowClass area(L"KTRVAddressBookArea", &DefWindowProcW, {});
  return area.Name();
}

MouseButton ButtonOf(WPARAM held) {
  return held & MK_RBUTTON ? MouseButton::Right : MouseButton::Left;
}

class PictureBoxWindow final : public Peer<controls::PictureBoxPeer> {
 public:
  PictureBoxWindow(FormWindow& form, controls::PictureBox& box) : Peer(form, box), box_(box) {
    Create(PlainClass(), 0);
  }
  void VisibleChanged() override {
    // An area shown during a drag must be above its neighbours.
    if (box_.Visible())
      SetWindowPos(Handle(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    ShowVisible();
  }
  void BackColorChanged() override { PaintNow(); }
  AccessiblePart Describe() const override { return {.Role = ROLE_SYSTEM_SEPARATOR}; }

 protected:
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
    switch (message) {
      case WM_ERASEBKGND:
        Paint(reinterpret_cast<HDC>(wParam));
        return TRUE;
      case WM_LBUTTONDOWN:
        Press(MouseButton::Left, lParam);
        return 0;
      case WM_RBUTTONDOWN:
        Press(MouseButton::Right, lParam);
        return 0;
      case WM_LBUTTONUP:
        Release(MouseButton::Left, lParam);
        return 0;
      case WM_RBUTTONUP:
        Release(MouseButton::Right, lParam);
        return 0;
      case WM_CAPTURECHANGED:
        LoseMouse();
        return 0;
      case WM_MOUSEMOVE:
        Report(box_.MouseMove, ButtonOf(wParam), lParam);
        return 0;
      case WM_SETCURSOR:
        if (box_.Pointer() != controls::MousePointer::SizeWestEast) return std::nullopt;
        SetCursor(LoadCursorW(nullptr, IDC_SIZEWE));
        return TRUE;
      default:
        return std::nullopt;
    }
  }

 private:
  void Report(const controls::PictureBox::MouseEvent& event, controls::MouseButton button,
              LPARAM place) const {
    if (!event) return;
    event(button, HeldKeys(), CurrentScale().ToTwips(GET_X_LPARAM(place)),
          CurrentScale().ToTwips(GET_Y_LPARAM(place)));
  }
  void Press(controls::MouseButton button, LPARAM place) {
    SetCapture(Handle());
    held_ = button;
    Report(box_.MouseDown, button, place);
  }
  void Release(controls::MouseButton button, LPARAM place) {
    held_.reset();
    if (GetCapture() == Handle()) ReleaseCapture();
    Report(box_.MouseUp, button, place);
  }
  void LoseMouse() {
    const auto button = std::exchange(held_, std::nullopt);
    if (!button) return;
    // Another window captured the mouse, so there will be no button-up message. Simulate it.
    POINT place{};
    GetCursorPos(&place);
    ScreenToClient(Handle(), &place);
    Report(box_.MouseUp, *button, MAKELPARAM(place.x, place.y));
  }
  void Paint(HDC target) const {
    RECT area{};
    GetClientRect(Handle(), &area);
    const std::uint32_t color = box_.BackColor();
    if (color & 0x80000000) {
      FillRect(target, &area, GetSysColorBrush(static_cast<int>(color & 0xFF)));
    } else {
      const UniqueBrush brush(CreateSolidBrush(color));
      FillRect(target, &area, brush.Get());
    }
  }

  controls::PictureBox& box_;
  std::optional<controls::MouseButton> held_;  ///< pressed here and not released yet
};

}  // namespace

std::unique_ptr<controls::PictureBoxPeer> WindowFactory::Make(controls::PictureBox& control) {
  return std::make_unique<PictureBoxWindow>(form_, control);
}

}  // namespace ktrv::windows
