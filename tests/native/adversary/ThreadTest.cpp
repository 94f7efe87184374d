#include <gtest/gtest.h>
#include <iostream>

#include "tests/native/adversary/Comparing.h"
#include "tests/native/adversary/FailingThreads.h"
#include "tests/native/adversary/Tasks.h"
#include "tests/native/support/TestDispatcher.h"

namespace ktrv::tests {
namespace {

/// The system starts no thread when one is wanted, once in a task.
struct ThreadsOfTaskTest : testing::TestWithParam<std::size_t> {
  const UserTask& Task() const { return UserTasks()[GetParam()]; }

  /// \param came becomes whether the task wanted that thread. \return what is wrong; empty when all
  /// is well
  std::string Try(std::int64_t thread, const Rows& before, const Rows& after, bool& came) const {
    std::string wrong;
    const auto complain = [&](const std::string& text) { wrong += "\n    " + text; };
    Stage stage(u"SQL");
    FailingThreads::FailAt(thread);
    const bool confirmed = Task().Act(stage);
    came = FailingThreads::HasFailed();
    FailingThreads::FailAt(0);
    stage.screen.Pump();
    if (stage.Escaped > 0) complain("a failure came out of an event");
    // Who cancels does so on the user's thread when there is no other.
    if (!confirmed && stage.Log().find("Resource temporarily unavailable") == std::string::npos) {
      complain("failed without a word in the log");
    }
    wrong += WrongBehind(confirmed, stage.book.Contents(), before, after);
    if (!confirmed) {
      if (!Task().Act(stage)) complain("the second time it fails too");
      if (const auto text = Difference(stage.book.Contents(), after); !text.empty()) {
        complain("after the second time the database is not as it should be:" + text);
      }
    }
    if (!wrong.empty()) wrong += LogFor(stage);
    if (const auto rest = stage.Close(); !rest.empty()) complain("left: " + rest);
    return wrong;
  }
};

TEST_P(ThreadsOfTaskTest, NothingIsLostOrUnsaidWhenAThreadDoesNotStart) {
  Rows before;
  Rows after;
  std::int64_t all = 0;
  {
    Stage stage(u"SQL");
    before = stage.book.Contents();
    FailingThreads::FailAt(0);
    ASSERT_TRUE(Task().Act(stage));
    all = FailingThreads::Counted();
    after = stage.book.Contents();
  }
  int red = 0;
  std::int64_t tried = 0;
  for (std::int64_t thread = 1; thread <= all; ++thread) {
    const std::string name = "thread " + std::to_string(thread);
    Announce(name);
    bool came = false;
    const std::string wrong = Try(thread, before, after, came);
    tried += came ? 1 : 0;
    if (wrong.empty()) continue;
    ++red;
    ADD_FAILURE() << name << wrong;
  }
  // Whether there is something to cancel, which takes a thread, is a matter of moments.
  EXPECT_TRUE(all == 0 || tried > 0);
  std::cout << "[ adversary] " << Task().Name << ": " << tried << " of " << all << " threads, red "
            << red << std::endl;
}

TEST(ThreadTest, AQueryIsNotLeftRunningWhereNoThreadStartsWhenItIsGivenUp) {
  DriverCall query;
  {
    Stage stage(u"SQL");
    stage.driver.StartCounting();
    ASSERT_TRUE(stage.Book(u"SFLD1", true));
    for (const DriverCall& call : stage.driver.Calls()) {
      if (call.CanBeCancelled && call.What.starts_with("Execute")) query = call;
    }
  }
  ASSERT_NE(query.What, "");
  Stage stage(u"SQL");
  forms::frmAddressBook* window = stage.Book(u"SHARED", true);
  ASSERT_TRUE(window);
  stage.driver.StartCounting();
  stage.driver.Arm(query, Fault::Hangs);
  stage.Do([&] { window->tvwContacts.UserClicks(*window->tvwContacts.Find(u"SFLD1")); });
  stage.screen.WaitUntil([&] { return stage.driver.IsHanging(); });
  ASSERT_TRUE(stage.driver.IsHanging());
  FailingThreads::FailAt(1);
  stage.Do([&] { window->UserCloses(); });
  // The one that cancels was there before, as it may not be the user's.
  EXPECT_FALSE(FailingThreads::HasFailed());
  FailingThreads::FailAt(0);
  EXPECT_EQ(stage.Escaped, 0);
  EXPECT_TRUE(WaitForFetches());
  EXPECT_FALSE(stage.driver.IsHanging());
  EXPECT_TRUE(stage.Book(u"SFLD1", true));
  EXPECT_EQ(stage.Close(), "");
}

INSTANTIATE_TEST_SUITE_P(Tasks, ThreadsOfTaskTest,
                         testing::Range<std::size_t>(0, UserTasks().size()),
                         [](const auto& each) { return UserTasks()[each.param].Name; });

}  // namespace
}  // namespace ktrv::tests
