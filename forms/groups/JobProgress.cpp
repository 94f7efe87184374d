#include "forms/groups/JobProgress.h"

#include <algorithm>
#include <limits>

#include "controls/Form.h"

namespace ktrv::forms {
namespace {

/// Often enough for the eye, seldom enough to cost nothing.
constexpr std::chrono::milliseconds kPaintEvery{100};

std::int32_t BarValue(std::int64_t steps) {
  return static_cast<std::int32_t>(
      std::min<std::int64_t>(steps, std::numeric_limits<std::int32_t>::max()));
}

}  // namespace

JobProgress::JobProgress(controls::Label& label, controls::ProgressBar& bar, StringView text,
                         std::int64_t steps)
    : label_(label), bar_(bar), steps_(std::max<std::int64_t>(steps, 1)) {
  bar_.SetRange(0, BarValue(steps_));
  bar_.SetValue(0);
  label_.SetCaption(String(text));
  label_.SetVisible(true);
  bar_.SetVisible(true);
  Paint();
}

JobProgress::~JobProgress() {
  bar_.SetVisible(false);
  label_.SetVisible(false);
}

void JobProgress::Say(StringView text) {
  label_.SetCaption(String(text));
  // What follows may take its time before the first step is done.
  label_.Refresh();
}

void JobProgress::Extend(std::int64_t steps) {
  steps_ += steps;
  bar_.SetRange(0, BarValue(steps_));
}

void JobProgress::Advance() {
  ++done_;
  bar_.SetValue(BarValue(done_));
  if (std::chrono::steady_clock::now() - painted_ >= kPaintEvery) Paint();
}

void JobProgress::Paint() {
  for (controls::Control* control : label_.Parent().Controls()) {
    if (control->Visible()) control->Refresh();
  }
  painted_ = std::chrono::steady_clock::now();
}

}  // namespace ktrv::forms
