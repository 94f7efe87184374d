#include "database/LimitedDriver.h"

#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <thread>

#include "common/Error.h"
#include "database/BackgroundFetch.h"
#include "database/Command.h"
#include "database/Engines.h"
#include "database/KeepingDriver.h"
#include "tests/native/support/FakeDriver.h"
#include "tests/native/support/TestDispatcher.h"

namespace ktrv::database {
namespace {

using namespace std::chrono_literals;
using tests::FakeDriver;
using Clock = std::chrono::steady_clock;

/// For the calls that a test expects to run into it.
constexpr std::chrono::milliseconds kLimit{100};
/// For all others: longer than the machine may be slow.
constexpr std::chrono::seconds kInTime{10};

struct LimitedDriverTest : testing::Test {
  LimitedDriverTest() {
    driver.Kind = Engine::PostgreSql;
    driver.Answer(u"SELECT", {{u"ID", DataType::Integer}}, {{u"1"}, {u"2"}, {u"3"}});
    driver.Changes(u"UPDATE", 1);
  }
  ~LimitedDriverTest() override {
    for (tests::Gate* gate :
         {&driver.OpenGate, &driver.FetchGate, &driver.CancelGate, &driver.CommitGate}) {
      gate->Open();
    }
    limited.EndIdle();
    EXPECT_TRUE(tests::WaitForFetches());
    EXPECT_EQ(driver.LinksAlive(), 0);
  }

  std::unique_ptr<Link> Open() { return limited.Open(u"DSN=Book", {}, {}); }

  /// The number of the failure of the action, which has to come in time; 0 when there is none.
  template <class Action>
  static std::int32_t FailureOf(Action&& action) {
    const auto until = Clock::now() + kInTime;
    std::int32_t number = 0;
    try {
      action();
    } catch (const Error& error) {
      EXPECT_FALSE(error.Description().empty());
      number = error.Number();
    }
    EXPECT_LT(Clock::now(), until);
    return number;
  }
  /// A line on which nothing comes any more, not even the end of a cancelled call.
  void FallSilent() {
    driver.FetchGate.Close();
    driver.CancelGate.Close();
  }
  /// Whether it works at one of a few times: a machine that holds the call up for longer than
  /// kLimit makes it fail too.
  static bool Works(const std::function<bool()>& attempt) {
    constexpr int kMostTries = 10;
    for (int tries = 0; tries < kMostTries; ++tries) {
      if (attempt()) return true;
    }
    return false;
  }
  static void Read(Link& link) {
    const auto statement = link.Prepare(u"SELECT ID FROM T", {});
    statement->Execute({});
    while (statement->Fetch(1)) {
    }
  }

  FakeDriver driver;
  TimeLimits limits{kInTime, kInTime, kInTime};
  LimitedDriver limited{driver, [this](StringView) { return limits; }};
};

TEST_F(LimitedDriverTest, AStatementGivesWhatItsDriverGives) {
  limits = {};
  const auto link = Open();
  const auto statement = link->Prepare(u"SELECT ID FROM T", {});
  statement->Execute({});
  ASSERT_EQ(statement->Columns().size(), 1U);
  EXPECT_EQ(statement->Fetch(2)->Rows(), 2U);
  EXPECT_EQ(statement->Fetch(2)->Rows(), 1U);
  EXPECT_EQ(statement->Fetch(2), nullptr);
  const auto update = link->Prepare(u"UPDATE T SET N = 1", {});
  update->Execute({});
  EXPECT_EQ(update->RowsAffected(), 1);
  EXPECT_EQ(FailureOf([&] { link->Prepare(u"DROP", {})->Execute({}); }),
            ErrorNumber::TableNotFound);
}

TEST_F(LimitedDriverTest, AStatementThatEndsDoesNotEndTheOthers) {
  const auto link = Open();
  const auto before = link->Prepare(u"SELECT ID FROM T", {});
  auto ended = link->Prepare(u"UPDATE T SET N = 1", {});
  const auto after = link->Prepare(u"SELECT ID FROM T", {});
  ended->Execute({});
  ended.reset();
  for (Statement* const statement : {before.get(), after.get()}) {
    EXPECT_EQ(FailureOf([&] { statement->Execute({}); }), 0);
    EXPECT_EQ(statement->Fetch(2)->Rows(), 2U);
  }
}

TEST_F(LimitedDriverTest, AnOpeningThatIsNotAnsweredFailsAndClosesWhatItMakesLate) {
  limits.Opening = kLimit;
  driver.OpenGate.Close();
  EXPECT_EQ(FailureOf([&] { Open(); }), ErrorNumber::TimedOut);
  driver.OpenGate.Open();
  EXPECT_TRUE(tests::WaitForFetches());
  EXPECT_EQ(driver.Opened().size(), 1U);
  EXPECT_EQ(driver.LinksAlive(), 0);
}

TEST_F(LimitedDriverTest, AnOpeningThatFailsTellsWhy) {
  driver.FailOpen(Error(ErrorNumber::LoginFailed, u"no"));
  EXPECT_EQ(FailureOf([&] { Open(); }), ErrorNumber::LoginFailed);
}

TEST_F(LimitedDriverTest, AStatementThatTakesTooLongIsCancelledAndTheLinkWorksOn) {
  limits.Statement = kLimit;
  EXPECT_TRUE(Works([this] {
    const auto link = Open();
    const std::size_t opened = driver.Opened().size();
    const int cancels = driver.Cancels();
    driver.FetchGate.Close();
    EXPECT_EQ(FailureOf([&] { Read(*link); }), ErrorNumber::TimedOut);
    const bool wasCancelled = driver.Cancels() > cancels;
    driver.FetchGate.Open();
    return wasCancelled && FailureOf([&] { Read(*link); }) == 0 && driver.Opened().size() == opened;
  }));
}

TEST_F(LimitedDriverTest, ACommandThatTookTooLongCanBeExecutedAgain) {
  limits.Statement = kLimit;
  EXPECT_TRUE(Works([this] {
    Connection connection({[this](StringView) -> Driver& { return limited; }, [](const auto&) {}});
    connection.Open(u"DSN=Book");
    Command command;
    command.SetActiveConnection(&connection);
    command.SetCommandText(u"SELECT ID FROM T");
    driver.FetchGate.Close();
    EXPECT_EQ(FailureOf([&] { command.Execute(); }), ErrorNumber::TimedOut);
    driver.FetchGate.Open();
    return FailureOf([&] { command.Execute(); }) == 0;
  }));
}

TEST_F(LimitedDriverTest, AStatementThatDoesNotComeBackIsLeftAndItsLinkFailsAtOnce) {
  limits.Statement = kLimit;
  const auto link = Open();
  const auto before = link->Prepare(u"UPDATE T SET N = 1", {});
  FallSilent();
  EXPECT_EQ(FailureOf([&] { Read(*link); }), ErrorNumber::TimedOut);
  EXPECT_EQ(FailureOf([&] { before->Execute({}); }), ErrorNumber::TimedOut);
  EXPECT_EQ(FailureOf([&] { link->Prepare(u"SELECT", {}); }), ErrorNumber::TimedOut);
  EXPECT_EQ(FailureOf([&] { link->RollBack(); }), ErrorNumber::TimedOut);
  driver.CancelGate.Open();
  EXPECT_TRUE(tests::WaitForFetches());
  EXPECT_EQ(driver.Executed().size(), 1U);
}

TEST_F(LimitedDriverTest, ALinkThatWasLeftEndsWhenItsCallComesBack) {
  limits.Statement = kLimit;
  EXPECT_TRUE(Works([this] {
    auto link = Open();
    FallSilent();
    EXPECT_EQ(FailureOf([&] { Read(*link); }), ErrorNumber::TimedOut);
    link.reset();
    const bool stayed = driver.LinksAlive() == 1;
    driver.CancelGate.Open();
    EXPECT_TRUE(tests::WaitForFetches());
    EXPECT_EQ(driver.LinksAlive(), 0);
    return stayed;
  }));
}

TEST_F(LimitedDriverTest, ACommitThatIsNotAnsweredFailsAndSoDoesTheRollBack) {
  limits.Statement = kLimit;
  const auto link = Open();
  driver.CommitGate.Close();
  EXPECT_EQ(FailureOf([&] { link->Commit(); }), ErrorNumber::TimedOut);
  EXPECT_EQ(FailureOf([&] { link->RollBack(); }), ErrorNumber::TimedOut);
}

TEST_F(LimitedDriverTest, TheLimitIsThatOfAllRowsTogether) {
  limits.Statement = kLimit;
  const auto link = Open();
  driver.FetchMilliseconds = static_cast<int>(kLimit.count()) / 2;
  EXPECT_EQ(FailureOf([&] { Read(*link); }), ErrorNumber::TimedOut);
}

TEST_F(LimitedDriverTest, AStatementWithoutALimitTakesWhatItNeeds) {
  limits.Statement = kLimit;
  const auto link = Open();
  driver.FetchMilliseconds = static_cast<int>(kLimit.count()) * 2;
  const auto statement = link->Prepare(u"SELECT ID FROM T", {});
  statement->LiftTimeLimit();
  statement->Execute({});
  EXPECT_TRUE(statement->Fetch(3));
}

TEST_F(LimitedDriverTest, TheQuestionWhetherALinkAnswersHasALimitOfItsOwn) {
  EXPECT_TRUE(Answers(*Open()));
  limits.Answer = kLimit;
  limits.Statement = std::chrono::hours(1);
  const auto link = Open();
  driver.FetchGate.Close();
  EXPECT_EQ(FailureOf([&] { EXPECT_FALSE(Answers(*link)); }), 0);
}

TEST_F(LimitedDriverTest, NoLimitNeedsNoThread) {
  limits = {0ms, 0ms, 0ms};
  const auto link = Open();
  Read(*link);
  EXPECT_EQ(BackgroundFetch::Running(), 0U);
}

TEST_F(LimitedDriverTest, AFileIsLeftAlone) {
  driver.Kind = Engine::Sqlite;
  Open();
  limited.EndIdle();
  Read(*Open());
  EXPECT_EQ(BackgroundFetch::Running(), 0U);
}

TEST_F(LimitedDriverTest, ALinkThatIsKeptIsGivenUpWhenItDoesNotAnswer) {
  limits.Answer = kLimit;
  KeepingDriver keeping(limited);
  keeping.Open(u"DSN=Book", {}, {});
  std::this_thread::sleep_for(200ms);
  FallSilent();
  EXPECT_EQ(FailureOf([&] { keeping.Open(u"DSN=Book", {}, {}); }), 0);
  EXPECT_EQ(driver.Opened().size(), 2U);
}

TEST_F(LimitedDriverTest, NoneIsOpenedWhileManyHang) {
  constexpr int kMany = 32;
  limits = {1ms, 1ms, 1ms};
  driver.OpenGate.Close();
  for (int opening = 0; opening < kMany; ++opening) EXPECT_NE(FailureOf([&] { Open(); }), 0);
  std::this_thread::sleep_for(2100ms);
  const std::size_t before = BackgroundFetch::Running();
  EXPECT_EQ(FailureOf([&] { Open(); }), ErrorNumber::TimedOut);
  EXPECT_EQ(BackgroundFetch::Running(), before);
  driver.OpenGate.Open();
  EXPECT_TRUE(tests::WaitForFetches());
  limits = {};
  EXPECT_EQ(FailureOf([&] { Open(); }), 0);
}

}  // namespace
}  // namespace ktrv::database
