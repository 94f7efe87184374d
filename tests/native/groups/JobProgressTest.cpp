#include "forms/groups/JobProgress.h"

#include <gtest/gtest.h>
#include <thread>

#include "controls/Form.h"
#include "tests/native/support/NoPeers.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::tests {
namespace {

struct PaintedLabel final : controls::LabelPeer {
  explicit PaintedLabel(int& paints) : Paints(paints) {}
  void BoundsChanged() override {}
  void VisibleChanged() override {}
  void EnabledChanged() override {}
  void TextChanged() override {}
  void FocusRequested() override {}
  void RefreshRequested() override { ++Paints; }
  int& Paints;
};

struct CountedPaints final : NoPeers {
  using NoPeers::Make;
  Window<controls::LabelPeer> Make(controls::Label&) override {
    return std::make_unique<PaintedLabel>(Paints);
  }
  int Paints = 0;
};

TEST(JobProgressTest, ABarStartsAtNothing) {
  ScriptedScreen screen;
  controls::Form form(screen, {});
  controls::Label label(form, {}, u"");
  controls::ProgressBar bar(form, {});
  controls::CommandButton stop(form, {}, u"&Cancel");
  bar.SetValue(50);
  const forms::JobProgress progress({label, bar, stop}, u"Working", 100);
  EXPECT_EQ(bar.Value(), 0);
}

TEST(JobProgressTest, AStepIsPaintedNowAndThenOnly) {
  ScriptedScreen screen;
  controls::Form form(screen, {});
  controls::Label label(form, {}, u"");
  controls::ProgressBar bar(form, {});
  controls::CommandButton stop(form, {}, u"&Cancel");
  CountedPaints peers;
  label.Realise(peers);
  constexpr int kSteps = 1000;
  forms::JobProgress progress({label, bar, stop}, u"Working", kSteps);
  peers.Paints = 0;
  for (int step = 0; step < kSteps; ++step) progress.Advance();
  EXPECT_LT(peers.Paints, kSteps / 10);
  peers.Paints = 0;
  std::this_thread::sleep_for(std::chrono::milliseconds(150));
  progress.Advance();
  EXPECT_EQ(peers.Paints, 1);
}

}  // namespace
}  // namespace ktrv::tests
