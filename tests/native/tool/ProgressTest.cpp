#include "tool/Progress.h"

#include <gtest/gtest.h>
#include <sstream>

namespace ktrv::tests {
namespace {

class ProgressTest : public testing::Test {
 protected:
  ProgressTest() { progress.Pause = std::chrono::milliseconds(0); }

  std::istringstream in;
  std::ostringstream out;
  std::ostringstream messages;
  tool::Console console{out, messages, in, true};
  tool::Progress progress{console, "read"};
};

TEST_F(ProgressTest, ComparesTheRowsWithAll) {
  progress.Total = 3000;
  for (std::int64_t row = 1; row <= 2000; ++row) progress.Count(row);
  progress.Finish(2500);
  EXPECT_EQ(messages.str(),
            "\r1000 of 3000 read (33 %)"
            "\r2000 of 3000 read (66 %)"
            "\r2500 read               \n");
}

TEST_F(ProgressTest, TellsHowMuchIsDone) {
  progress.Percent = [] { return 7; };
  progress.Count(1000);
  EXPECT_EQ(messages.str(), "\r1000 read (7 %)");
}

TEST_F(ProgressTest, CanEmptyItsLine) {
  progress.Clear();
  EXPECT_EQ(messages.str(), "");
  progress.Count(1000);
  progress.Clear();
  EXPECT_EQ(messages.str(), "\r1000 read\r         \r");
}

/// Rows may come while they are read.
TEST_F(ProgressTest, IsNeverAboveAll) {
  progress.Total = 900;
  progress.Count(1000);
  EXPECT_EQ(messages.str(), "\r1000 of 900 read (100 %)");
}

TEST_F(ProgressTest, IsAPlainLineElsewhere) {
  console.IsInteractive = false;
  progress.Total = 2000;
  progress.Count(1000);
  progress.Finish(2000);
  EXPECT_EQ(messages.str(), "2000 read\n");
}

}  // namespace
}  // namespace ktrv::tests
