#include "forms/groups/JobProgress.h"

#include <algorithm>
#include <utility>

namespace ktrv::forms {
namespace {

/// Interval between looks for input: too short to be noticed.
constexpr std::chrono::milliseconds kLookEvery{30};
/// Interval between repaints: smooth, but with negligible cost.
constexpr std::chrono::milliseconds kPaintEvery{100};

}  // namespace

JobProgress::JobProgress(Display display, StringView text, std::int64_t steps)
    : display_(display),
      stopCaption_(display.Stop.Caption()),
      work_(display.Stop.Parent(), display.Stop),
      steps_(std::max<std::int64_t>(steps, 1)) {
  display_.Bar.SetRange(0, steps_);
  display_.Bar.SetValue(0);
  display_.Label.SetCaption(String(text));
  display_.Label.SetVisible(true);
  display_.Bar.SetVisible(true);
  Paint();
}

JobProgress::~JobProgress() {
  display_.Bar.SetVisible(false);
  display_.Label.SetVisible(false);
  display_.Stop.SetCaption(std::move(stopCaption_));
}

void JobProgress::Say(StringView text) {
  display_.Label.SetCaption(String(text));
  // Paint now, because the first step may take a long time.
  display_.Label.Refresh();
}

void JobProgress::Extend(std::int64_t steps) {
  steps_ += steps;
  display_.Bar.SetRange(0, steps_);
}

void JobProgress::Advance() {
  if (!GoesOn()) throw Stopped();
}

bool JobProgress::GoesOn() {
  ++done_;
  display_.Bar.SetValue(done_);
  return !IsToStop();
}

void JobProgress::Look() {
  if (IsToStop()) throw Stopped();
}

bool JobProgress::IsToStop() {
  const auto now = std::chrono::steady_clock::now();
  if (now - looked_ < kLookEvery) return false;
  if (now - painted_ >= kPaintEvery) {
    display_.Stop.SetCaption(u"&Stop");
    Paint();
  }
  const bool stops = work_.IsToStop();
  looked_ = std::chrono::steady_clock::now();
  return stops;
}

void JobProgress::Paint() {
  for (controls::Control* control : display_.Label.Parent().Controls()) {
    if (control->Visible()) control->Refresh();
  }
  painted_ = looked_ = std::chrono::steady_clock::now();
}

}  // namespace ktrv::forms
