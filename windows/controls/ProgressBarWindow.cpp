#include "windows/controls/ProgressBarWindow.h"

#include "controls/StatusBar.h"
#include "windows/controls/StatusBarWindow.h"

namespace ktrv::windows {

ProgressBarWindow::ProgressBarWindow(FormWindow& form, controls::ProgressBar& bar)
    : Peer(form, bar), bar_(bar) {
  Create(PROGRESS_CLASSW, PBS_SMOOTH);
  ValueChanged();
}

void ProgressBarWindow::ValueChanged() {
  // Each value is painted at once, which takes a common control longer than a step of the work.
  constexpr ULONGLONG kStill = 50;
  const bool atEnd = bar_.Value() == bar_.Min() || bar_.Value() == bar_.Max();
  const ULONGLONG now = GetTickCount64();
  if (!atEnd && now - shownAt_ < kStill) return;
  shownAt_ = now;
  Send(PBM_SETRANGE32, static_cast<WPARAM>(bar_.Min()), bar_.Max());
  // The theme glides up to a higher value and lags far behind a quick fetch; down it jumps.
  if (bar_.Value() < bar_.Max()) Send(PBM_SETPOS, static_cast<WPARAM>(bar_.Value() + 1));
  Send(PBM_SETPOS, static_cast<WPARAM>(bar_.Value()));
}

void ProgressBarWindow::PlacedIn(controls::StatusBar& statusBar, int panel) {
  auto* host = dynamic_cast<StatusBarWindow*>(statusBar.Display());
  if (!host || !Handle()) return;
  PlaceProgressBar(host->Handle(), Handle(), panel);
  host->SetGuest(Handle(), panel);
}

}  // namespace ktrv::windows
