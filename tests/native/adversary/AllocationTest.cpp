#include <algorithm>
#include <gtest/gtest.h>
#include <iostream>
#include <vector>

#include "tests/native/adversary/Comparing.h"
#include "tests/native/adversary/Tasks.h"

namespace ktrv::tests {
namespace {

/// On the user's thread, memory is short for one allocation of a task.
struct AllocationTest : testing::TestWithParam<std::size_t> {
  const UserTask& Task() const { return UserTasks()[GetParam()]; }

  /// One that is stored is there, though it was not listed or the host not told its id; its user
  /// does not make it once more.
  bool MakesContact() const {
    return Task().Name == "AddContacts" || Task().Name.starts_with("NewContact");
  }

  /// \return what is wrong; empty when all is well
  std::string Try(std::int64_t allocation, const Rows& before, const Rows& after) const {
    std::string wrong;
    const auto complain = [&](const std::string& text) { wrong += "\n    " + text; };
    Stage stage(u"SQL");
    FailingAllocations::FailAt(allocation);
    bool confirmed = false;
    bool left = false;
    try {
      confirmed = Task().Act(stage);
    } catch (const std::bad_alloc&) {
      left = true;  // out of what the user called, where the edge of a window would have caught it
    }
    FailingAllocations::FailAt(0);
    stage.screen.Pump();
    const Rows contents = stage.book.Contents();
    wrong += WrongBehind(confirmed, contents, before, after);
    if (!confirmed && !left && !(MakesContact() && Difference(contents, after).empty())) {
      const int refusals = stage.screen.Refusals;
      if (!Task().Act(stage) && stage.screen.Refusals == refusals) {
        complain("the second time it fails too");
      }
      if (const auto text = Difference(stage.book.Contents(), after); !text.empty()) {
        complain("after the second time the database is not as it should be:" + text);
      }
    }
    if (!wrong.empty()) wrong += LogFor(stage);
    if (const auto rest = stage.Close(); !rest.empty()) complain("left: " + rest);
    return wrong;
  }
};

TEST_P(AllocationTest, NothingIsLostWhenMemoryIsShortOnce) {
  Rows before;
  Rows after;
  std::int64_t all = 0;
  {
    Stage stage(u"SQL");
    before = stage.book.Contents();
    FailingAllocations::FailAt(0);
    ASSERT_TRUE(Task().Act(stage));
    all = FailingAllocations::Counted();
    after = stage.book.Contents();
  }
  // How many there are differs a little from run to run: lists come in other pieces.
  Choice choice("Allocation", Task().Name, static_cast<std::size_t>(all), 3, 41, GetParam());
  std::size_t ran = 0;
  std::size_t red = 0;
  for (std::int64_t allocation = 1; allocation <= all; ++allocation) {
    const std::string name = "allocation " + std::to_string(allocation);
    if (!choice.Takes(static_cast<std::size_t>(allocation), name)) continue;
    Announce(name);
    ++ran;
    const std::string wrong = Try(allocation, before, after);
    if (wrong.empty()) continue;
    ++red;
    ADD_FAILURE() << name << wrong;
  }
  std::cout << "[ adversary] " << Task().Name << ": " << all << " allocations, " << ran
            << " tried, red " << red << std::endl;
  if (const auto open = choice.Open(); !open.empty()) GTEST_SKIP() << open;
}

TEST(AllocationOfValuesTest, ValueThatCannotBeCopiedIsOnlyAnException) {
  const Variant text = String(100, u'x');
  std::vector<Variant> copies;
  copies.reserve(1);
  const FailingAllocations::Scope scope(true);
  FailingAllocations::FailAt(1);
  EXPECT_THROW(copies.push_back(text), std::bad_alloc);
  FailingAllocations::FailAt(0);
}

INSTANTIATE_TEST_SUITE_P(Tasks, AllocationTest, testing::Range<std::size_t>(0, UserTasks().size()),
                         [](const auto& each) { return UserTasks()[each.param].Name; });

}  // namespace
}  // namespace ktrv::tests
