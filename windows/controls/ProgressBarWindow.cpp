#include "controls/ProgressBar.h"
#include "controls/StatusBar.h"
#include "windows/controls/StatusBarWindow.h"
#include "windows/controls/WindowFactory.h"

namespace ktrv::windows {

namespace {

class ProgressBarWindow final : public Peer<controls::ProgressBarPeer> {
 public:
  ProgressBarWindow(FormWindow& form, controls::ProgressBar& bar) : Peer(form, bar), bar_(bar) {
    Create(PROGRESS_CLASSW, PBS_SMOOTH);
    ValueChanged();
    MarqueeChanged();
  }

  void MarqueeChanged() override {
    const LONG_PTR style = GetWindowLongPtrW(Handle(), GWL_STYLE);
    const LONG_PTR other = bar_.Marquee() ? style | PBS_MARQUEE : style & ~LONG_PTR{PBS_MARQUEE};
    if (other == style) return;
    SetWindowLongPtrW(Handle(), GWL_STYLE, other);
    constexpr LPARAM kStep = 40;  // milliseconds
    Send(PBM_SETMARQUEE, bar_.Marquee(), kStep);
    InvalidateRect(Handle(), nullptr, TRUE);
  }
  void ValueChanged() override {
    // Painting each value takes longer than a step of the work, so updates are throttled.
    constexpr ULONGLONG kStill = 50;
    const bool atEnd = bar_.Value() == bar_.Min() || bar_.Value() == bar_.Max();
    const ULONGLONG now = GetTickCount64();
    if (!atEnd && now - shownAt_ < kStill) return;
    shownAt_ = now;
    Send(PBM_SETRANGE32, static_cast<WPARAM>(bar_.Min()), bar_.Max());
    // The theme animates increases, which lags behind a fast fetch; decreases are immediate.
    if (bar_.Value() < bar_.Max()) Send(PBM_SETPOS, static_cast<WPARAM>(bar_.Value() + 1));
    Send(PBM_SETPOS, static_cast<WPARAM>(bar_.Value()));
  }
  AccessiblePart Describe() const override {
    AccessiblePart told{.Role = ROLE_SYSTEM_PROGRESSBAR, .State = STATE_SYSTEM_READONLY};
    if (bar_.Marquee()) return told;
    const std::int64_t done = std::int64_t{bar_.Value()} - bar_.Min();
    told.Value = std::to_wstring(100 * done / (std::int64_t{bar_.Max()} - bar_.Min())) + L"%";
    return told;
  }
  void PlacedIn(controls::StatusBar& statusBar, int panel) override {
    auto* host = dynamic_cast<StatusBarWindow*>(statusBar.Display());
    if (!host || !Handle()) return;
    PlaceProgressBar(host->Handle(), Handle(), panel);
    host->SetGuest(Handle(), panel);
  }

 private:
  controls::ProgressBar& bar_;
  ULONGLONG shownAt_ = 0;  ///< GetTickCount64 of the last update
};

}  // namespace

std::unique_ptr<controls::ProgressBarPeer> WindowFactory::Make(controls::ProgressBar& control) {
  return std::make_unique<ProgressBarWindow>(form_, control);
}

}  // namespace ktrv::windows
