#include <chrono>
#include <cstdio>

#include "database/BackgroundFetch.h"
#include "tests/contract/ContractTest.h"

namespace ktrv::tests {
namespace {

using database::EventStatus;
using database::Recordset;

class Listener {
 public:
  explicit Listener(Recordset& recordset) {
    recordset.FetchComplete = [this](const Error* error, EventStatus status) {
      Ends.push_back(status);
      if (error) Failure = error->Number();
    };
  }
  std::vector<EventStatus> Ends;
  std::int32_t Failure = 0;
};

TEST_P(ContractTest, ACancelledStatementGivesNoMoreRows) {
  Insert(String(u"Ann"));
  Insert(String(u"Bob"));
  const auto link = testDatabase->Driver().Open(testDatabase->ConnectionString(), {}, {});
  const auto statement = link->Prepare(u"SELECT FNAME FROM CONTACTS", {});
  statement->Execute({});
  EXPECT_NE(statement->Fetch(1), nullptr);
  statement->Cancel();
  EXPECT_EQ(FailureOf([&] { statement->Fetch(1); }), ErrorNumber::CommandCancelled);
}

TEST_P(ContractTest, BackgroundFetchBringsAllRows) {
  Insert(String(u"Ann"));
  for (int doubling = 0; doubling < 12; ++doubling) {
    connection.Execute(u"INSERT INTO CONTACTS (FNAME) SELECT FNAME FROM CONTACTS");
  }
  Recordset rows(environment);
  Listener listener(rows);
  rows.Open(u"SELECT ID, FNAME FROM CONTACTS", connection, {.Async = true});
  ASSERT_TRUE(dispatcher.RunUntil([&] { return !listener.Ends.empty(); }));
  EXPECT_EQ(listener.Ends, std::vector{EventStatus::Ok});
  EXPECT_EQ(rows.RecordCount(), 4096);
}

TEST_P(ContractTest, BackgroundFetchTellsOfAMissingTable) {
  Recordset rows(environment);
  Listener listener(rows);
  rows.Open(u"SELECT * FROM NO_SUCH_TABLE", connection, {.Async = true});
  ASSERT_TRUE(dispatcher.RunUntil([&] { return !listener.Ends.empty(); }));
  EXPECT_EQ(listener.Ends, std::vector{EventStatus::ErrorsOccurred});
  EXPECT_EQ(listener.Failure, ErrorNumber::TableNotFound);
}

TEST_P(ContractTest, BackgroundFetchTellsOfAFailedConnection) {
  Recordset rows(environment);
  Listener listener(rows);
  rows.Open(u"SELECT 1 AS ONE", u"Driver=No Such Driver", {.Async = true});
  ASSERT_TRUE(dispatcher.RunUntil([&] { return !listener.Ends.empty(); }));
  EXPECT_EQ(listener.Failure, ErrorNumber::DriverFailure);
}

TEST_P(ContractTest, EndlessFetchIsCancelled) {
  Recordset rows(environment);
  Listener listener(rows);
  rows.Open(testDatabase->EndlessQuery(), connection, {.Async = true});
  // Cancelling before the engine has begun is another test's matter.
  const auto begun = std::chrono::steady_clock::now() + std::chrono::milliseconds(200);
  ASSERT_TRUE(dispatcher.RunUntil([&] {
    return std::chrono::steady_clock::now() > begun &&
           testDatabase->IsRunning(testDatabase->EndlessQuery());
  }));
  const auto start = std::chrono::steady_clock::now();
  rows.Cancel();
  ASSERT_TRUE(dispatcher.RunUntil([&] { return !listener.Ends.empty(); }));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(15));
  EXPECT_EQ(listener.Ends, std::vector{EventStatus::Cancelled});
  if (!testDatabase->CanBeCancelled()) {
    std::puts("Here the engine goes on, which holds nobody up.");
    EXPECT_FALSE(WaitForFetches(std::chrono::milliseconds(200))) << "it can be cancelled after all";
    testDatabase->EndSessions();
  }
  EXPECT_TRUE(WaitForFetches()) << "the engine goes on";
}

TEST_P(ContractTest, FetchesGivenUpWhileRowsComeLeaveNothingBroken) {
  Insert(String(u"Ann"));
  for (int doubling = 0; doubling < 11; ++doubling) {
    connection.Execute(u"INSERT INTO CONTACTS (FNAME) SELECT FNAME FROM CONTACTS");
  }
  for (int round = 0; round < 200; ++round) {
    Recordset rows(environment);
    rows.BackgroundFetchSize = 10;
    rows.Open(u"SELECT ID, FNAME FROM CONTACTS ORDER BY FNAME", connection, {.Async = true});
    const std::int64_t some = std::int64_t{round} * 5;
    ASSERT_TRUE(dispatcher.RunUntil([&] { return rows.RecordCount() >= some; }));
  }
  EXPECT_TRUE(WaitForFetches());
}

TEST_P(ContractTest, ManyFetchesReplacedAtOnceAllEnd) {
  Insert(String(u"Ann"));
  Recordset rows(environment);
  for (int round = 0; round < 20; ++round) {
    rows = Recordset(environment);
    rows.Open(u"SELECT ID, FNAME FROM CONTACTS", connection, {.Async = true});
  }
  Listener listener(rows);
  ASSERT_TRUE(dispatcher.RunUntil([&] { return !listener.Ends.empty(); }));
  EXPECT_EQ(listener.Ends, std::vector{EventStatus::Ok});
  EXPECT_TRUE(WaitForFetches());
}

TEST_P(ContractTest, ConnectionIsUsableWhileAFetchRuns) {
  Insert(String(u"Ann"));
  Recordset rows(environment);
  Listener listener(rows);
  rows.Open(testDatabase->EndlessQuery(), connection, {.Async = true});
  EXPECT_EQ(Query(u"SELECT * FROM CONTACTS").RecordCount(), 1);
  rows.Close();
  if (!testDatabase->CanBeCancelled()) {
    // The engine may not have begun when the sessions are ended, so more than once.
    for (int tries = 0; tries < 20 && !WaitForFetches(std::chrono::milliseconds(200)); ++tries) {
      testDatabase->EndSessions();
    }
  }
  EXPECT_TRUE(WaitForFetches());
}

}  // namespace
}  // namespace ktrv::tests
