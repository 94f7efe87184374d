#include "controls/ProgressBar.h"

#include <algorithm>
#include <limits>

#include "common/Error.h"
#include "controls/StatusBar.h"

namespace ktrv::controls {

ProgressBar::ProgressBar(Form& form, Rectangle bounds) : ControlOf(form, bounds) {}

void ProgressBar::SetRange(std::int32_t min, std::int64_t max) {
  if (min >= max) throw Error(ErrorNumber::InvalidPropertyValue);
  min_ = min;
  max_ = static_cast<std::int32_t>(
      std::min<std::int64_t>(max, std::numeric_limits<std::int32_t>::max()));
  value_ = std::clamp(value_, min_, max_);
  if (peer_) peer_->ValueChanged();
}

void ProgressBar::SetValue(std::int64_t value) {
  const auto inside = static_cast<std::int32_t>(std::clamp<std::int64_t>(value, min_, max_));
  if (inside == value_) return;
  value_ = inside;
  if (peer_) peer_->ValueChanged();
}

void ProgressBar::SetMarquee(bool marquee) {
  if (marquee == marquee_) return;
  marquee_ = marquee;
  if (peer_) peer_->MarqueeChanged();
}

void ProgressBar::PlaceIn(StatusBar& statusBar, int panel) {
  host_ = &statusBar;
  hostPanel_ = panel;
  if (peer_) peer_->PlacedIn(statusBar, panel);
}

void ProgressBar::Realise(PeerFactory& factory) {
  ControlOf::Realise(factory);
  if (peer_ && host_ && hostPanel_ <= host_->PanelCount()) peer_->PlacedIn(*host_, hostPanel_);
}

}  // namespace ktrv::controls
