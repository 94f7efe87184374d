#include "database/KeepingDriver.h"

#include <functional>
#include <gtest/gtest.h>
#include <thread>

#include "common/Error.h"
#include "database/BackgroundFetch.h"
#include "database/Engines.h"
#include "database/Recordset.h"
#include "tests/native/support/FakeDriver.h"
#include "tests/native/support/TestDispatcher.h"

namespace ktrv::database {
namespace {

using tests::FakeDriver;

constexpr StringView kString = u"DSN=Book";

struct KeepingDriverTest : testing::Test {
  KeepingDriverTest() {
    driver.Kind = Engine::MySql;
    driver.Answer(u"SELECT", {{u"ID", DataType::Integer}}, {{u"1"}});
    driver.Changes(u"UPDATE", 1);
    driver.Changes(u"SET", 0);
    driver.SetKeyColumns({u"ID"});
  }

  std::unique_ptr<Link> Open(StringView string = kString) { return keeping.Open(string, {}, {}); }
  /// How many connections were made.
  std::size_t Made() const { return driver.Opened().size(); }
  static void Think() { std::this_thread::sleep_for(kIdle + std::chrono::milliseconds(20)); }
  /// Does it again and again until it took less than kIdle. \return false when it never did
  static bool DoWithinIdle(const std::function<void()>& action) {
    constexpr int kMostTries = 100;
    for (int tries = 0; tries < kMostTries; ++tries) {
      const auto began = std::chrono::steady_clock::now();
      action();
      if (std::chrono::steady_clock::now() - began < kIdle) return true;
    }
    return false;
  }
  static void Run(Link& link, StringView text) { link.Prepare(text, {})->Execute({}); }

  FakeDriver driver;
  KeepingDriver keeping{driver};
};

TEST_F(KeepingDriverTest, AClosedLinkServesTheNextOpening) {
  Run(*Open(), u"SELECT ID FROM T");
  Run(*Open(), u"UPDATE T SET X = 1");
  Open();
  EXPECT_EQ(Made(), 1U);
}

TEST_F(KeepingDriverTest, TwoAtATimeAreTwo) {
  const auto first = Open();
  Open();
  EXPECT_EQ(Made(), 2U);
}

TEST_F(KeepingDriverTest, AtMostAFewAreKept) {
  std::vector<std::unique_ptr<Link>> links;
  for (int link = 0; link < 10; ++link) links.push_back(Open());
  links.clear();
  EXPECT_EQ(driver.LinksAlive(), 4);
}

TEST_F(KeepingDriverTest, AnotherStringUserOrPasswordGetsItsOwn) {
  keeping.Open(kString, u"ann", u"x");
  keeping.Open(kString, u"bob", u"x");
  keeping.Open(kString, u"ann", u"y");
  keeping.Open(u"dsn=book", u"ann", u"x");
  EXPECT_EQ(Made(), 4U);
  keeping.Open(kString, u"ann", u"x");
  EXPECT_EQ(Made(), 4U);
}

TEST_F(KeepingDriverTest, FilesAndUnknownEnginesAreClosed) {
  for (const Engine engine : {Engine::Sqlite, Engine::Other}) {
    driver.Kind = engine;
    Open();
    EXPECT_EQ(driver.LinksAlive(), 0);
  }
}

TEST_F(KeepingDriverTest, ALinkOnWhichAStatementFailedIsClosed) {
  driver.Fail(u"UPDATE", Error(ErrorNumber::IntegrityViolation, u"taken"));
  EXPECT_THROW(Run(*Open(), u"UPDATE T SET X = 1"), Error);
  EXPECT_EQ(driver.LinksAlive(), 0);
}

TEST_F(KeepingDriverTest, ALinkWhoseRowsFailedIsClosed) {
  driver.FailAtEnd(u"SELECT", Error(ErrorNumber::DriverFailure, u"line lost"));
  {
    const auto link = Open();
    const auto statement = link->Prepare(u"SELECT ID FROM T", {});
    statement->Execute({});
    EXPECT_THROW(while (statement->Fetch(1)){}, Error);
  }
  EXPECT_EQ(driver.LinksAlive(), 0);
}

TEST_F(KeepingDriverTest, ALinkWithChangedSettingsIsClosed) {
  Run(*Open(), u" /* x */ SET NAMES latin1");
  EXPECT_EQ(driver.LinksAlive(), 0);
}

TEST_F(KeepingDriverTest, ALinkWithinATransactionIsClosed) {
  Open()->Begin();
  EXPECT_EQ(driver.LinksAlive(), 0);
}

TEST_F(KeepingDriverTest, ALinkBehindATransactionIsKept) {
  {
    const auto link = Open();
    link->Begin();
    link->Commit();
    link->Begin();
    link->RollBack();
  }
  EXPECT_EQ(driver.LinksAlive(), 1);
}

TEST_F(KeepingDriverTest, ALinkWhoseTransactionDidNotEndIsClosed) {
  driver.FailCommit(Error(ErrorNumber::DriverFailure, u"line lost"));
  {
    const auto link = Open();
    link->Begin();
    EXPECT_THROW(link->Commit(), Error);
  }
  EXPECT_EQ(driver.LinksAlive(), 0);
}

TEST_F(KeepingDriverTest, ALinkThatWasCancelledIsClosed) {
  {
    const auto link = Open();
    link->Prepare(u"SELECT ID FROM T", {})->Cancel();
  }
  EXPECT_EQ(driver.LinksAlive(), 0);
}

TEST_F(KeepingDriverTest, ADeadLinkIsReplacedBeforeAnythingRunsOnIt) {
  {
    const auto other = Open();
    Open();
  }
  driver.LoseLinks();
  Think();
  Run(*Open(), u"UPDATE T SET X = 1");
  EXPECT_EQ(Made(), 3U);
  EXPECT_EQ(driver.LinksAlive(), 1);
  int updates = 0;
  for (const auto& each : driver.Executed()) updates += each.Text.starts_with(u"UPDATE") ? 1 : 0;
  EXPECT_EQ(updates, 1);
}

TEST_F(KeepingDriverTest, AWriteThatADeadLinkFailsIsNotRepeated) {
  std::unique_ptr<Link> lost;
  std::size_t before = 0;
  ASSERT_TRUE(DoWithinIdle([&] {
    lost.reset();
    keeping.CloseKept();
    before = Made();
    Open();
    driver.LoseLinks();
    lost = Open();
  }));
  EXPECT_THROW(Run(*lost, u"UPDATE T SET X = 1"), Error);
  lost.reset();
  EXPECT_EQ(Made(), before + 1);
  Run(*Open(), u"UPDATE T SET X = 1");
  EXPECT_EQ(Made(), before + 2);
}

TEST_F(KeepingDriverTest, ALinkThatWasIdleIsAskedOnce) {
  std::size_t before = 0;
  ASSERT_TRUE(DoWithinIdle([&] {
    keeping.CloseKept();
    before = driver.Executed().size();
    Open();
    Open();
  }));
  EXPECT_EQ(driver.Executed().size(), before);
  Think();
  Open();
  EXPECT_EQ(driver.Executed().size(), before + 1);
}

TEST_F(KeepingDriverTest, ALinkThatWasIdleWhileOpenIsAskedToo) {
  auto link = Open();
  Run(*link, u"SELECT ID FROM T");
  Think();
  driver.LoseLinks();
  link.reset();
  Run(*Open(), u"UPDATE T SET X = 1");
  EXPECT_EQ(Made(), 2U);
}

TEST_F(KeepingDriverTest, OpeningAloneDoesNotShowThatALinkWorks) {
  Open();
  driver.LoseLinks();
  for (int round = 0; round < 4; ++round) {
    std::this_thread::sleep_for(kIdle / 3);
    Open();
  }
  Run(*Open(), u"UPDATE T SET X = 1");
  EXPECT_EQ(Made(), 2U);
}

TEST_F(KeepingDriverTest, ALinkIsClosedInTimeThoughNobodyCalls) {
  KeepingDriver brief(driver, std::chrono::milliseconds(20));
  for (int round = 0; round < 2; ++round) {
    brief.Open(kString, {}, {});
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (driver.LinksAlive() > 0 && std::chrono::steady_clock::now() < deadline) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_EQ(driver.LinksAlive(), 0);
  }
}

TEST_F(KeepingDriverTest, ClosingLeavesNoLinkAndNoThread) {
  const auto used = Open();
  Open();
  keeping.CloseKept();
  EXPECT_EQ(driver.LinksAlive(), 1);
  EXPECT_EQ(BackgroundFetch::Running(), 0U);
}

TEST_F(KeepingDriverTest, ALinkThatEndsBehindTheClosingIsClosed) {
  auto used = Open();
  keeping.CloseKept();
  used.reset();
  EXPECT_EQ(driver.LinksAlive(), 0);
  Open();
  EXPECT_EQ(driver.LinksAlive(), 1);
}

TEST_F(KeepingDriverTest, TheEndOfTheDriverClosesAll) {
  { KeepingDriver(driver).Open(kString, {}, {}); }
  EXPECT_EQ(driver.LinksAlive(), 0);
  EXPECT_EQ(BackgroundFetch::Running(), 0U);
}

TEST_F(KeepingDriverTest, KeysAreAskedOnceForAllLinks) {
  const auto first = Open();
  EXPECT_EQ(first->KeyColumns(u"T"), std::vector<String>{u"ID"});
  driver.SetKeyColumns({u"OTHER"});
  EXPECT_EQ(Open()->KeyColumns(u"T"), std::vector<String>{u"ID"});
  EXPECT_EQ(Open(u"DSN=Other")->KeyColumns(u"T"), std::vector<String>{u"OTHER"});
}

TEST_F(KeepingDriverTest, ATableWithoutAKeyIsAskedAgain) {
  driver.SetKeyColumns({});
  EXPECT_TRUE(Open()->KeyColumns(u"T").empty());
  driver.SetKeyColumns({u"ID"});
  EXPECT_EQ(Open()->KeyColumns(u"T"), std::vector<String>{u"ID"});
}

TEST_F(KeepingDriverTest, AFetchLeavesItsLinkToTheNext) {
  tests::TestDispatcher dispatcher;
  const Environment environment{[this](StringView) -> Driver& { return keeping; },
                                dispatcher.Post()};
  for (int round = 0; round < 3; ++round) {
    Recordset rows(environment);
    rows.Open(u"SELECT ID FROM T", kString, {.Async = true});
    ASSERT_TRUE(dispatcher.RunUntil([&] { return rows.State() == ObjectState::Open; }));
    // The link ends behind the last row.
    while (driver.LinksAlive() > 0 && BackgroundFetch::Running() > 1) std::this_thread::yield();
  }
  EXPECT_EQ(Made(), 1U);
  keeping.CloseKept();
}

TEST_F(KeepingDriverTest, AnAbandonedFetchLeavesNone) {
  tests::TestDispatcher dispatcher;
  const Environment environment{[this](StringView) -> Driver& { return keeping; },
                                dispatcher.Post()};
  driver.FetchGate.Close();
  {
    Recordset rows(environment);
    rows.Open(u"SELECT ID FROM T", kString, {.Async = true});
    ASSERT_TRUE(dispatcher.RunUntil([&] { return driver.FetchGate.Waiting() == 1; }));
  }
  ASSERT_TRUE(tests::WaitForFetches());
  EXPECT_EQ(driver.LinksAlive(), 0);
}

}  // namespace
}  // namespace ktrv::database
