#include <gtest/gtest.h>
#include <iostream>

#include "tests/native/adversary/Comparing.h"
#include "tests/native/adversary/Tasks.h"

namespace ktrv::tests {
namespace {

struct Trial {
  DriverCall Call;
  Fault What;
  bool TriesAgain;  ///< the user, in the same dialog

  std::string Name() const {
    return Call.Name() + ": " + NameOf(What) + (TriesAgain ? "" : ", and the user gives up");
  }
};

struct Case {
  std::size_t Task;
  const char16_t* Word;
};

/// How a task goes when nothing goes wrong.
struct Course {
  Rows Before;
  Rows After;
  String Results;
  std::vector<DriverCall> Calls;
};

struct FaultyDriverTest : testing::TestWithParam<Case> {
  const UserTask& Task() const { return UserTasks()[GetParam().Task]; }

  Course WithoutFaults() const {
    Stage stage(GetParam().Word);
    Course course;
    course.Before = stage.book.Contents();
    EXPECT_TRUE(Task().Act(stage));
    course.Calls = stage.driver.Calls();
    course.After = stage.book.Contents();
    course.Results = Task().Results(stage);
    EXPECT_FALSE(stage.WasTold() && Task().Name != "LoadFolders") << stage.Log();
    EXPECT_EQ(stage.Close(), "");
    return course;
  }

  /// \return what is wrong; empty when all is well
  std::string Try(const Course& course, const Trial& trial) {
    std::string wrong;
    const auto complain = [&](const std::string& text) { wrong += "\n    " + text; };
    Stage stage(GetParam().Word);
    stage.driver.Arm(trial.Call, trial.What);
    stage.TriesAgain = trial.TriesAgain;
    const bool confirmed = Task().Act(stage);
    stage.driver.Heal();
    stage.TriesAgain = true;
    stage.screen.Pump();
    wasRefused = stage.Refused > 0;
    if (!stage.driver.Fired()) {
      ++missed;
      return {};
    }
    if (stage.Escaped > 0) complain("a failure came out of an event");
    wrong += WrongBehind(confirmed, stage.book.Contents(), course.Before, course.After);
    if (confirmed) {
      if (Task().Results(stage) != course.Results) {
        complain("confirmed with " + ToUtf8(Task().Results(stage)));
      }
    } else {
      if (!stage.WasTold() && !IsSilent(trial.What)) complain("failed without a word");
      // Work whose outcome was lost may be refused as done already, with a word.
      const int refusals = stage.screen.Refusals;
      if (!Task().Act(stage) && stage.screen.Refusals == refusals) {
        complain("the second time it fails too");
      }
      if (const auto text = Difference(stage.book.Contents(), course.After); !text.empty()) {
        complain("after the second time the database is not as it should be:" + text);
      }
      if (Task().Results(stage) != course.Results) {
        complain("the second time with " + ToUtf8(Task().Results(stage)));
      }
    }
    if (!wrong.empty()) wrong += LogFor(stage);
    if (const std::string left = stage.Close(); !left.empty()) complain("left: " + left);
    return wrong;
  }
  /// A statement that hangs is given up by the user, who needs not be told.
  static bool IsSilent(Fault fault) { return fault == Fault::Hangs || fault == Fault::CancelHangs; }

  int missed = 0;
  bool wasRefused = false;  ///< by OK, in the last trial
};

TEST_P(FaultyDriverTest, NothingIsLostDoubledOrFalselyConfirmed) {
  const Course course = WithoutFaults();
  if (HasFailure()) return;
  std::vector<Trial> trials;
  for (const DriverCall& call : course.Calls) {
    for (const Fault fault : FaultyDriver::FaultsOf(call)) trials.push_back({call, fault, true});
  }
  Choice choice("FaultyDriver", Task().Name, trials.size(), 8, 7, GetParam().Task);
  std::size_t ran = 0;
  std::map<std::string, int> red;
  const auto run = [&](const Trial& trial) {
    Announce(trial.Name());
    ++ran;
    const std::string wrong = Try(course, trial);
    if (wrong.empty()) return;
    ++red[NameOf(trial.What)];
    ADD_FAILURE() << trial.Name() << wrong;
  };
  for (std::size_t index = 0; index < trials.size(); ++index) {
    Trial trial = trials[index];
    if (!choice.Takes(index, trial.Name())) continue;
    wasRefused = false;
    run(trial);
    trial.TriesAgain = false;
    if (wasRefused && choice.Takes(index, trial.Name())) run(trial);
  }
  std::cout << "[ adversary] " << Task().Name << " " << ToUtf8(GetParam().Word) << ": "
            << trials.size() << " trials, " << ran << " tried, " << missed << " missed";
  for (const auto& [fault, count] : red) std::cout << ", " << fault << " red " << count;
  std::cout << std::endl;
  if (const auto open = choice.Open(); !open.empty()) GTEST_SKIP() << open;
}

std::vector<Case> Cases() {
  std::vector<Case> cases;
  for (std::size_t task = 0; task < UserTasks().size(); ++task) {
    for (const char16_t* word : {u"SQL", u"ORACLE"}) cases.push_back({task, word});
  }
  return cases;
}

INSTANTIATE_TEST_SUITE_P(Tasks, FaultyDriverTest, testing::ValuesIn(Cases()), [](const auto& each) {
  return UserTasks()[each.param.Task].Name + "_" + ToUtf8(each.param.Word);
});

}  // namespace
}  // namespace ktrv::tests
