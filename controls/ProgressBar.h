#pragma once

#include <cstdint>

#include "controls/Control.h"

namespace ktrv::controls {

class StatusBar;

class ProgressBarPeer : public ControlPeer {
 public:
  virtual void ValueChanged() = 0;
  virtual void MarqueeChanged() {}
  /// Moves into a panel of the status bar (1-based); 0: only makes the status bar its parent.
  virtual void PlacedIn(StatusBar& statusBar, int panel) = 0;
};

/// A bar that shows how far a task has come.
class ProgressBar final : public ControlOf<ProgressBar, ProgressBarPeer> {
 public:
  ProgressBar(Form& form, Rectangle bounds);

  std::int32_t Min() const { return min_; }
  std::int32_t Max() const { return max_; }
  std::int32_t Value() const { return value_; }
  /// Sets the range, up to the largest 32-bit number, and clamps the value. \throws Error
  /// InvalidPropertyValue unless min < max
  void SetRange(std::int32_t min, std::int64_t max);
  /// Sets the value, clamped to the range: a row count taken before a fetch may be outdated.
  void SetValue(std::int64_t value);

  /// Whether the bar moves without a value, for a task whose progress is not known yet.
  bool Marquee() const { return marquee_; }
  void SetMarquee(bool marquee);

  /// Moves the bar into a panel of the status bar (1-based). Its bounds are the panel's then.
  void PlaceIn(StatusBar& statusBar, int panel);
  /// The panel of the last PlaceIn; 0 before.
  int HostPanel() const { return hostPanel_; }

  void Realise(PeerFactory& factory) override;

 private:
  std::int32_t min_ = 0;
  std::int32_t max_ = 100;
  std::int32_t value_ = 0;
  bool marquee_ = false;
  int hostPanel_ = 0;
  StatusBar* host_ = nullptr;
};

}  // namespace ktrv::controls
