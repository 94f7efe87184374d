#include "windows/controls/StatusBarWindow.h"

#include <vector>

#include "controls/Form.h"
#include "windows/base/WideText.h"
#include "windows/controls/FormWindow.h"
#include "windows/controls/WindowFactory.h"

namespace ktrv::windows {

StatusBarWindow::StatusBarWindow(FormWindow& form, controls::StatusBar& bar)
    : Peer(form, bar), bar_(bar) {
  Create(STATUSCLASSNAMEW, CCS_BOTTOM | (bar.Parent().Layout().Resizable ? SBARS_SIZEGRIP : 0U));
  PanelsChanged();
}

void StatusBarWindow::SetGuest(HWND progressBar, int panel) {
  guest_ = progressBar;
  guestPanel_ = panel;
}

void StatusBarWindow::PanelsChanged() {
  LayOut();
  for (int panel = 1; panel <= bar_.PanelCount(); ++panel) PanelTextChanged(panel);
}

void StatusBarWindow::PanelTextChanged(int panel) {
  Send(SB_SETTEXTW, static_cast<WPARAM>(panel - 1), ToWide(bar_.PanelAt(panel).Text).c_str());
}

void StatusBarWindow::OnFormResized() {
  if (!Handle()) return;
  Send(WM_SIZE);  // the bar moves itself to the bottom edge
  LayOut();
  RECT place{};
  GetWindowRect(Handle(), &place);
  MapWindowPoints(nullptr, Owner().Handle(), reinterpret_cast<POINT*>(&place), 2);
  bar_.Move(CurrentScale().ToTwips(place));
}

AccessiblePart StatusBarWindow::Part(int number) const {
  AccessiblePart panel{.Role = ROLE_SYSTEM_STATICTEXT,
                       .State = STATE_SYSTEM_READONLY,
                       .Name = ToWide(bar_.PanelAt(number).Text)};
  Send(SB_GETRECT, static_cast<WPARAM>(number - 1), &panel.Place);
  return panel;
}

void StatusBarWindow::LayOut() {
  const Scale scale = CurrentScale();
  int spare = Owner().InnerSize().cx;
  if (bar_.Parent().Layout().Resizable) spare -= GetSystemMetrics(SM_CXVSCROLL);  // the size grip
  int springs = 0;
  for (int panel = 1; panel <= bar_.PanelCount(); ++panel) {
    spare -= scale.ToPixels(bar_.PanelAt(panel).Width);
    springs += bar_.PanelAt(panel).Springs ? 1 : 0;
  }
  std::vector<int> edges;
  int edge = 0;
  for (int panel = 1; panel <= bar_.PanelCount(); ++panel) {
    edge += scale.ToPixels(bar_.PanelAt(panel).Width);
    // In a narrow window these panels give up room, so that the others stay visible.
    if (bar_.PanelAt(panel).Springs) edge += spare / springs;
    edges.push_back(edge);
  }
  if (!edges.empty()) Send(SB_SETPARTS, edges.size(), edges.data());
  if (guest_ && IsChild(Handle(), guest_) && guestPanel_ <= bar_.PanelCount()) {
    PlaceProgressBar(Handle(), guest_, guestPanel_);
  }
}

std::unique_ptr<controls::StatusBarPeer> WindowFactory::Make(controls::StatusBar& control) {
  return std::make_unique<StatusBarWindow>(form_, control);
}

void PlaceProgressBar(HWND statusBar, HWND progressBar, int panel) {
  SetParent(progressBar, statusBar);
  if (panel < 1) return;
  constexpr UINT kGetRectangle = 1034;
  RECT place{};
  SendMessageA(statusBar, kGetRectangle, static_cast<WPARAM>(panel - 1),
               reinterpret_cast<LPARAM>(&place));
  MoveWindow(progressBar, place.left, place.top, place.right - place.left, place.bottom - place.top,
             TRUE);
}

}  // namespace ktrv::windows
