#include "controls/Frame.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/WindowFactory.h"

namespace ktrv::windows {

namespace {

class FrameWindow final : public Peer<controls::FramePeer> {
 public:
  FrameWindow(FormWindow& form, controls::Frame& control) : Peer(form, control) {
    Create(WC_BUTTONW, BS_GROUPBOX);
    ShowText(control.Caption());
  }

  bool ShowsCaption() const override { return true; }
  AccessiblePart Describe() const override { return {.Role = ROLE_SYSTEM_GROUPING}; }
  void OnFormRealised() override {
    // The controls inside were created later and are below the frame in z-order; move it to the
    // bottom.
    SetWindowPos(Handle(), HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  }

 private:
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM) override {
    if (message != WM_ERASEBKGND) return std::nullopt;
    // A group box does not paint its inside, and its parent clips children. So paint it here.
    RECT inside{};
    GetClientRect(Handle(), &inside);
    FillRect(reinterpret_cast<HDC>(wParam), &inside, GetSysColorBrush(COLOR_BTNFACE));
    return TRUE;
  }
};

}  // namespace

std::unique_ptr<controls::FramePeer> WindowFactory::Make(controls::Frame& control) {
  return std::make_unique<FrameWindow>(form_, control);
}

}  // namespace ktrv::windows
