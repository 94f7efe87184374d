#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <thread>

#include "database/BackgroundFetch.h"
#include "database/Recordset.h"
#include "tests/native/support/FakeDriver.h"
#include "tests/native/support/TestDispatcher.h"

namespace ktrv::database {
namespace {

using tests::FakeDriver;
using tests::TestDispatcher;

class RecordsetAsyncTest : public testing::Test {
 protected:
  void Open(std::int64_t rows) {
    std::vector<FakeDriver::Row> answer;
    for (std::int64_t row = 0; row < rows; ++row) answer.push_back({ToDecimal(row)});
    driver.Answer(u"", {{u"ID", DataType::Integer}}, std::move(answer));
    Listen();
    recordset.Open(u"SELECT ID FROM T", u"x", {.Async = true});
  }

  void Listen() {
    recordset.FetchProgress = [this](std::int64_t progress, std::int64_t) {
      progresses.push_back(progress);
    };
    recordset.FetchComplete = [this](const Error* error, EventStatus status) {
      ends.push_back(status);
      if (error) failure = *error;
    };
  }

  bool RunToEnd() {
    return dispatcher.RunUntil([&] { return !ends.empty(); });
  }

  /// Whatever the fetch could still say has been said behind this.
  void LetEverythingArrive() {
    ASSERT_TRUE(tests::WaitForFetches());
    dispatcher.RunWaiting();
  }

  FakeDriver driver;
  TestDispatcher dispatcher;
  Environment environment{[this](StringView) -> Driver& { return driver; }, dispatcher.Post()};
  Recordset recordset{environment};
  std::vector<std::int64_t> progresses;
  std::vector<EventStatus> ends;
  std::optional<Error> failure;
};

TEST_F(RecordsetAsyncTest, DisconnectedOneKeepsItsRowsAndNoLink) {
  driver.Answer(u"", {{u"ID", DataType::Integer}}, {{u"1"}, {u"2"}});
  recordset.Open(u"SELECT ID FROM T", u"x", {.Lock = LockType::Optimistic});
  EXPECT_EQ(driver.LinksAlive(), 1);
  recordset.Disconnect();
  EXPECT_EQ(driver.LinksAlive(), 0);
  EXPECT_EQ(recordset.RecordCount(), 2);
}

TEST_F(RecordsetAsyncTest, FetchesAllRowsAndCompletesOnce) {
  Open(3000);
  ASSERT_TRUE(RunToEnd());
  LetEverythingArrive();
  EXPECT_EQ(ends, std::vector{EventStatus::Ok});
  EXPECT_EQ(recordset.RecordCount(), 3000);
  EXPECT_EQ(recordset.CellText(2999, 0), u"2999");
}

TEST_F(RecordsetAsyncTest, OpenReturnsBeforeTheDatabaseAnswers) {
  driver.OpenGate.Close();
  Open(1);
  EXPECT_EQ(recordset.State(), ObjectState::Fetching);
  EXPECT_EQ(recordset.RecordCount(), 0);
  driver.OpenGate.Open();
  EXPECT_TRUE(RunToEnd());
}

TEST_F(RecordsetAsyncTest, ReportsProgressAfterEachBlock) {
  recordset.BackgroundFetchSize = 100;
  Open(260);
  ASSERT_TRUE(RunToEnd());
  EXPECT_EQ(progresses, (std::vector<std::int64_t>{50, 150, 250, 260}));
}

TEST_F(RecordsetAsyncTest, FirstBlockIsNeverLargerThanTheFetchSize) {
  recordset.BackgroundFetchSize = 7;
  Open(10);
  ASSERT_TRUE(RunToEnd());
  EXPECT_EQ(progresses, (std::vector<std::int64_t>{7, 10}));
}

TEST_F(RecordsetAsyncTest, EmptyResultHasColumnsAndNoProgress) {
  Open(0);
  ASSERT_TRUE(RunToEnd());
  EXPECT_TRUE(progresses.empty());
  EXPECT_EQ(recordset.Columns().size(), 1u);
  EXPECT_TRUE(recordset.EndOfFile());
}

TEST_F(RecordsetAsyncTest, RowsThatHaveComeCanBeReadWhileFetching) {
  recordset.BackgroundFetchSize = 10;
  Open(30);
  ASSERT_TRUE(dispatcher.RunUntil([&] { return !progresses.empty(); }));
  EXPECT_EQ(recordset.State(), ObjectState::Fetching);
  EXPECT_EQ(std::get<std::int64_t>(recordset.Field(u"id")), 0);
  EXPECT_TRUE(RunToEnd());
  EXPECT_EQ(recordset.State(), ObjectState::Open);
}

TEST_F(RecordsetAsyncTest, FailedConnectionArrivesWithTheCompletion) {
  driver.FailOpen(Error(ErrorNumber::LoginFailed, u"refused"));
  Open(1);
  ASSERT_TRUE(RunToEnd());
  EXPECT_EQ(ends, std::vector{EventStatus::ErrorsOccurred});
  EXPECT_EQ(failure->Number(), ErrorNumber::LoginFailed);
  EXPECT_EQ(recordset.RecordCount(), 0);
}

TEST_F(RecordsetAsyncTest, FailedTextArrivesWithTheCompletion) {
  driver.Fail(u"NOPE", Error(ErrorNumber::TableNotFound, u"no such table"));
  Listen();
  recordset.Open(u"SELECT * FROM NOPE", u"x", {.Async = true});
  ASSERT_TRUE(RunToEnd());
  EXPECT_EQ(failure->Number(), ErrorNumber::TableNotFound);
}

TEST_F(RecordsetAsyncTest, DatabaseThatGoesAwayKeepsTheRowsThatCame) {
  driver.Answer(u"T", {{u"ID", DataType::Integer}}, {{u"1"}, {u"2"}});
  driver.FailAtEnd(u"T", Error(ErrorNumber::DriverFailure, u"gone away"));
  Listen();
  recordset.Open(u"SELECT ID FROM T", u"x", {.Async = true});
  ASSERT_TRUE(RunToEnd());
  EXPECT_EQ(ends, std::vector{EventStatus::ErrorsOccurred});
  EXPECT_EQ(failure->Description(), u"gone away");
  EXPECT_EQ(recordset.RecordCount(), 2);
}

TEST_F(RecordsetAsyncTest, EmptyTextFailsAtOnce) {
  try {
    recordset.Open(u"  ", u"x", {.Async = true});
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), ErrorNumber::NoCommandText);
  }
}

TEST_F(RecordsetAsyncTest, CancelledFetchSaysSoOnceAndKeepsItsRows) {
  recordset.BackgroundFetchSize = 10;
  Open(1000);
  ASSERT_TRUE(dispatcher.RunUntil([&] { return progresses.size() == 2; }));
  recordset.Cancel();
  EXPECT_TRUE(ends.empty()) << "the event comes later, not from within Cancel";
  ASSERT_TRUE(RunToEnd());
  LetEverythingArrive();
  EXPECT_EQ(ends, std::vector{EventStatus::Cancelled});
  EXPECT_EQ(recordset.RecordCount(), 20);
  EXPECT_EQ(recordset.State(), ObjectState::Open);
}

TEST_F(RecordsetAsyncTest, CancelDoesNotWaitForTheDatabase) {
  driver.OpenGate.Close();
  Open(10);
  recordset.Cancel();
  ASSERT_TRUE(RunToEnd());
  EXPECT_EQ(ends, std::vector{EventStatus::Cancelled});
  EXPECT_EQ(BackgroundFetch::Running(), 1u) << "the connection is still being made";
  driver.OpenGate.Open();
  LetEverythingArrive();
  EXPECT_EQ(ends.size(), 1u);
}

TEST_F(RecordsetAsyncTest, CancelReachesTheRunningStatement) {
  driver.FetchGate.Close();
  Open(10);
  ASSERT_TRUE(dispatcher.RunUntil([&] { return driver.FetchGate.Waiting() == 1; }));
  recordset.Cancel();
  EXPECT_TRUE(dispatcher.RunUntil([&] { return driver.Cancels() > 0; }));
  EXPECT_TRUE(tests::WaitForFetches()) << "the gate is still closed";
}

TEST_F(RecordsetAsyncTest, CancelWithoutAFetchDoesNothing) {
  recordset.Cancel();
  Open(1);
  ASSERT_TRUE(RunToEnd());
  recordset.Cancel();
  LetEverythingArrive();
  EXPECT_EQ(ends, std::vector{EventStatus::Ok});
}

TEST_F(RecordsetAsyncTest, NoEventArrivesAfterClose) {
  Open(1000);
  ASSERT_TRUE(dispatcher.RunUntil([&] { return dispatcher.Waiting() > 0; }));
  recordset.Close();
  LetEverythingArrive();
  EXPECT_TRUE(progresses.empty());
  EXPECT_TRUE(ends.empty());
}

TEST_F(RecordsetAsyncTest, ReplacedRecordsetSaysNothingMore) {
  Open(1000);
  recordset = Recordset(environment);
  EXPECT_EQ(recordset.State(), ObjectState::Closed);
  LetEverythingArrive();
  EXPECT_TRUE(ends.empty());
  EXPECT_EQ(driver.LinksAlive(), 0);
}

TEST_F(RecordsetAsyncTest, MovedRecordsetGoesOnFetching) {
  Open(100);
  Recordset moved = std::move(recordset);
  ASSERT_TRUE(RunToEnd());
  EXPECT_EQ(moved.RecordCount(), 100);
}

TEST_F(RecordsetAsyncTest, EventMayReplaceItsRecordset) {
  Open(1000);
  recordset.FetchProgress = [this](std::int64_t, std::int64_t) {
    recordset = Recordset(environment);
    progresses.push_back(0);
  };
  ASSERT_TRUE(dispatcher.RunUntil([&] { return !progresses.empty(); }));
  LetEverythingArrive();
  EXPECT_EQ(progresses.size(), 1u);
}

TEST_F(RecordsetAsyncTest, CompletionMayOpenTheNextFetch) {
  Open(10);
  recordset.FetchComplete = [this](const Error*, EventStatus status) {
    ends.push_back(status);
    if (ends.size() > 1) return;
    recordset.Close();
    recordset.Open(u"SELECT ID FROM T", u"x", {.Async = true});
  };
  ASSERT_TRUE(dispatcher.RunUntil([&] { return ends.size() == 2; }));
  EXPECT_EQ(recordset.RecordCount(), 10);
}

TEST_F(RecordsetAsyncTest, EventThatThrowsDoesNotStopTheFetch) {
  recordset.BackgroundFetchSize = 10;
  Open(40);
  recordset.FetchProgress = [](std::int64_t, std::int64_t) { throw 1; };
  int thrown = 0;
  const bool complete = [&] {
    for (;;) {
      try {
        return RunToEnd();
      } catch (int) {
        ++thrown;
      }
    }
  }();
  EXPECT_TRUE(complete);
  EXPECT_EQ(thrown, 4);
  EXPECT_EQ(recordset.RecordCount(), 40);
}

TEST_F(RecordsetAsyncTest, SlowUserInterfaceIsGivenOneClosureAtATime) {
  Open(20000);
  ASSERT_TRUE(tests::WaitForFetches());
  EXPECT_EQ(dispatcher.Waiting(), 1u);
  EXPECT_TRUE(RunToEnd());
}

TEST_F(RecordsetAsyncTest, FetchesOnALinkOfItsOwn) {
  Connection connection(environment);
  connection.Open(u"shared");
  driver.Answer(u"", {{u"ID", DataType::Integer}}, {{u"1"}});
  Listen();
  recordset.Open(u"SELECT ID FROM T", connection, {.Async = true});
  connection.Close();
  ASSERT_TRUE(RunToEnd());
  EXPECT_EQ(recordset.RecordCount(), 1);
  EXPECT_EQ(driver.Opened(), (std::vector<String>{u"shared", u"shared"}));
}

TEST_F(RecordsetAsyncTest, DisconnectedRecordsetKeepsItsRowsAndIsNotUpdatable) {
  Open(1);
  recordset.Disconnect();
  ASSERT_TRUE(RunToEnd());
  EXPECT_EQ(recordset.RecordCount(), 1);
  EXPECT_THROW(recordset.SetField(u"ID", std::int64_t{2}), Error);
}

TEST_F(RecordsetAsyncTest, CancellingDoesNotHoldTheUserWhereTheDriverHoldsTheCancel) {
  driver.FetchGate.Close();
  driver.CancelGate.Close();
  Open(10);
  ASSERT_TRUE(dispatcher.RunUntil([&] { return driver.FetchGate.Waiting() == 1; }));
  std::atomic<bool> returned = false;
  std::thread rescue([&] {
    for (int tries = 0; tries < 200 && !returned; ++tries) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    if (!returned) driver.CancelGate.Open();
  });
  recordset.Cancel();
  EXPECT_EQ(driver.Cancels(), 0) << "it waited for the driver";
  returned = true;
  rescue.join();
  ASSERT_TRUE(RunToEnd());
  EXPECT_EQ(ends, std::vector{EventStatus::Cancelled});
  driver.CancelGate.Open();
  EXPECT_TRUE(tests::WaitForFetches());
}

}  // namespace
}  // namespace ktrv::database
