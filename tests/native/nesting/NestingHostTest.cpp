#include "tests/native/nesting/NestingHost.h"

#include <cctype>
#include <cstdlib>
#include <gtest/gtest.h>

namespace ktrv::tests {
namespace {

using Outcome = NestingHost::Outcome;

/// What is there when nothing comes between.
struct Plain {
  Outcome Left;
  Outcome First;
  Outcome Second;
  int Moments = 0;
  int Records = 0;
};

template <class Job>
Plain Alone(NestingHost::Databases& databases, const Job& job) {
  NestingHost host(databases);
  Plain plain;
  plain.Left = job.Do(host);
  plain.First = host.FirstRows();
  plain.Second = host.SecondRows();
  plain.Moments = host.Moments();
  plain.Records = host.Records();
  return plain;
}

/// One act of the host at each moment of each task of the user; at every second one if not all are
/// asked for.
class NestingHostTest : public testing::TestWithParam<std::size_t> {
 protected:
  void Check(const NestingHost::Task& task, const NestingHost::Act& act) {
    const Plain plain = Alone(databases, task);
    const Plain acted = Alone(databases, act);
    ASSERT_GT(plain.Moments, 0);
    const bool all = std::getenv("KTRV_ADVERSARY");
    const int first = all || plain.Moments == 1 ? 1 : 1 + static_cast<int>(GetParam() % 2);
    for (int moment = first; moment <= plain.Moments; moment += all ? 1 : 2) {
      SCOPED_TRACE(std::string(task.Name) + ", moment " + std::to_string(moment));
      NestingHost host(databases);
      const Outcome before = host.FirstRows();
      host.ActAt(moment, act);
      const Outcome left = task.Do(host);
      ASSERT_TRUE(host.HasActed());
      const bool bookIsGone = act.ReplacesBook && left.empty();
      EXPECT_EQ(left, bookIsGone ? Outcome{} : plain.Left) << "what the task left";
      EXPECT_EQ(host.WhatTheActLeft(), acted.Left) << "what the act left";
      EXPECT_EQ(host.FirstRows(), bookIsGone && moment <= task.Asks ? before : plain.First);
      EXPECT_EQ(host.SecondRows(), acted.Second);
      EXPECT_EQ(host.Records(), plain.Records + acted.Records)
          << ToUtf8(host.system.TextOf(u"log"));
      EXPECT_TRUE(host.session.Services.Modal.Open().empty());
      host.main.reset();
      EXPECT_FALSE(host.dialogs.AddressBook().IsLoaded());
    }
  }

  static NestingHost::Databases& Shared() {
    static NestingHost::Databases both;
    return both;
  }
  NestingHost::Databases& databases = Shared();
};

TEST_P(NestingHostTest, NothingOfTheTaskIsLostOrMisdirected) {
  const NestingHost::Act& act = NestingHost::Acts().at(GetParam());
  for (const NestingHost::Task& task : NestingHost::Tasks()) Check(task, act);
}

INSTANTIATE_TEST_SUITE_P(Acts, NestingHostTest,
                         testing::Range<std::size_t>(0, NestingHost::Acts().size()),
                         [](const auto& act) {
                           std::string name = NestingHost::Acts().at(act.param).Name;
                           for (char& each : name) {
                             if (!std::isalnum(static_cast<unsigned char>(each))) each = '_';
                           }
                           return name;
                         });

}  // namespace
}  // namespace ktrv::tests
