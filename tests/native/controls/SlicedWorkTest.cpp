#include "controls/SlicedWork.h"

#include <gtest/gtest.h>
#include <thread>

#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::controls {
namespace {

struct SlicedWorkTest : testing::Test {
  /// Portions of which each takes a slice.
  SlicedWork::Portion LongPortions(int count) {
    return [this, count] {
      std::this_thread::sleep_for(std::chrono::milliseconds(25));
      return ++done < count;
    };
  }

  tests::ScriptedScreen screen;
  SlicedWork work;
  int done = 0;
};

TEST_F(SlicedWorkTest, FirstSliceRunsAtOnceAndOthersFromTheQueue) {
  work.Start(screen, LongPortions(3));
  EXPECT_EQ(done, 1);
  EXPECT_TRUE(work.IsRunning());
  screen.Pump();
  EXPECT_EQ(done, 3);
  EXPECT_FALSE(work.IsRunning());
}

TEST_F(SlicedWorkTest, StoppedWorkDoesNotGoOn) {
  work.Start(screen, LongPortions(3));
  work.Stop();
  screen.Pump();
  EXPECT_EQ(done, 1);
}

TEST_F(SlicedWorkTest, NewWorkReplacesTheFormerOne) {
  work.Start(screen, LongPortions(3));
  int others = 0;
  work.Start(screen, [&] { return ++others < 2; });
  screen.Pump();
  EXPECT_EQ(done, 1);
  EXPECT_EQ(others, 2);
  EXPECT_FALSE(work.IsRunning());
}

TEST_F(SlicedWorkTest, FailureEndsTheWork) {
  EXPECT_THROW(work.Start(screen, []() -> bool { throw Error(ErrorNumber::Overflow); }), Error);
  EXPECT_FALSE(work.IsRunning());
}

TEST_F(SlicedWorkTest, WorkMayOutliveItsOwnerInTheQueueOnly) {
  {
    SlicedWork gone;
    gone.Start(screen, LongPortions(3));
  }
  screen.Pump();
  EXPECT_EQ(done, 1);
}

}  // namespace
}  // namespace ktrv::controls
