#include "database/BackgroundFetch.h"

#include <gtest/gtest.h>
#include <new>
#include <thread>

#include "tests/native/support/FakeDriver.h"
#include "tests/native/support/TestDispatcher.h"

namespace ktrv::database {
namespace {

/// A receiver whose memory is short at a block of the test's choice.
class BackgroundFetchTest : public testing::Test, public BackgroundFetch::Receiver {
 protected:
  void Fetch(int rows) {
    std::vector<tests::FakeDriver::Row> answer;
    for (int row = 0; row < rows; ++row) answer.push_back({ToDecimal(row)});
    driver.Answer(u"", {{u"ID", DataType::Integer}}, std::move(answer));
    fetch.emplace(environment, DatabaseAddress{u"x", {}, {}}, u"SELECT ID FROM T", 10, *this);
  }
  bool RunToEnd() {
    return dispatcher.RunUntil([&] { return !ends.empty(); });
  }
  void LetEverythingArrive() {
    ASSERT_TRUE(tests::WaitForFetches());
    dispatcher.RunWaiting();
  }

  void ColumnsCame(std::vector<Column>) override {
    if (failsAtColumns) throw std::bad_alloc();
  }
  void RowsCame(std::unique_ptr<RowBlock>) override {
    if (++blocks == failingBlock) throw std::bad_alloc();
  }
  void RowsTaken() override { ++taken; }
  void FetchEnded(const Error* error, EventStatus status) override {
    if (error) failure = error->Number();
    ends.push_back(status);
  }

  bool failsAtColumns = false;
  int failingBlock = 0;
  int blocks = 0;
  int taken = 0;
  std::int32_t failure = 0;
  std::vector<EventStatus> ends;
  tests::FakeDriver driver;
  tests::TestDispatcher dispatcher;
  std::atomic<int> postsThatFail = 0;
  Environment environment{[this](StringView) -> Driver& { return driver; },
                          [this, post = dispatcher.Post()](std::function<void()> work) {
                            if (postsThatFail > 0 && postsThatFail-- > 0) throw std::bad_alloc();
                            post(std::move(work));
                          }};
  std::optional<BackgroundFetch> fetch;
};

TEST_F(BackgroundFetchTest, BlockThatCannotBeStoredIsNoCompleteLoad) {
  failingBlock = 2;
  Fetch(100);
  ASSERT_TRUE(RunToEnd());
  LetEverythingArrive();
  EXPECT_EQ(ends, std::vector{EventStatus::ErrorsOccurred});
  EXPECT_EQ(failure, ErrorNumber::OutOfMemory);
  EXPECT_EQ(blocks, 2) << "rows behind the lost ones were taken";
  EXPECT_EQ(taken, 1) << "lost rows were told as taken";
}

TEST_F(BackgroundFetchTest, LastBlockThatCannotBeStoredIsNoCompleteLoad) {
  failingBlock = 2;
  Fetch(20);
  ASSERT_TRUE(RunToEnd());
  LetEverythingArrive();
  EXPECT_EQ(ends, std::vector{EventStatus::ErrorsOccurred});
}

TEST_F(BackgroundFetchTest, ColumnsThatCannotBeStoredAreNoCompleteLoad) {
  failsAtColumns = true;
  Fetch(20);
  ASSERT_TRUE(RunToEnd());
  LetEverythingArrive();
  EXPECT_EQ(ends, std::vector{EventStatus::ErrorsOccurred});
  EXPECT_EQ(blocks, 0);
}

TEST_F(BackgroundFetchTest, NoneBeginsWhileManyThatWereGivenUpHang) {
  constexpr int kMany = 32;
  driver.FetchGate.Close();
  driver.CancelGate.Close();
  for (int number = 0; number < kMany; ++number) {
    Fetch(20);
    ASSERT_TRUE(dispatcher.RunUntil([&] { return driver.FetchGate.Waiting() > number; }));
    fetch.reset();
  }
  Fetch(20);
  ASSERT_TRUE(dispatcher.RunUntil([&] { return driver.FetchGate.Waiting() > kMany; }))
      << "those that were given up just now may end at once";
  fetch.reset();
  std::this_thread::sleep_for(std::chrono::milliseconds(2100));
  Fetch(20);
  ASSERT_TRUE(RunToEnd());
  EXPECT_EQ(ends, std::vector{EventStatus::ErrorsOccurred});
  EXPECT_EQ(failure, ErrorNumber::TimedOut);
  driver.CancelGate.Open();
  driver.FetchGate.Open();
  LetEverythingArrive();
  ends.clear();
  Fetch(20);
  ASSERT_TRUE(RunToEnd());
  EXPECT_EQ(ends, std::vector{EventStatus::Ok});
}

TEST_F(BackgroundFetchTest, ClosureThatCannotBePostedLosesNoRows) {
  for (int failing = 1; failing < 8; ++failing) {
    ends.clear();
    blocks = 0;
    postsThatFail = failing;
    Fetch(100);
    ASSERT_TRUE(RunToEnd()) << "the load never ended, " << failing;
    LetEverythingArrive();
    ASSERT_EQ(ends.size(), 1u);
    EXPECT_TRUE(ends[0] == EventStatus::ErrorsOccurred || blocks == 10) << failing;
  }
}

}  // namespace
}  // namespace ktrv::database
