#include "tests/native/randomuser/RandomUser.h"

#include <chrono>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>

namespace ktrv::tests {
namespace {

/// How long each test continues with other seeds; without KTRV_RANDOM_SECONDS it tries one seed.
std::chrono::seconds Longer() {
  constexpr std::chrono::seconds kNight{450};
  const char* const wish = std::getenv("KTRV_RANDOM_SECONDS");
  if (!wish) return {};
  return std::getenv("KTRV_NIGHT") ? kNight : std::chrono::seconds(std::atoi(wish));
}

struct RandomUserTest : testing::TestWithParam<unsigned> {
  void Run(unsigned seed) {
    RandomUser user(seed);
    for (int round = 0; round < 4; ++round) {
      for (int step = 0; step < 50; ++step) user.Step();
      const std::string wrong = user.Check();
      ASSERT_EQ(wrong, "") << "seed " << seed << ", step " << user.Counted().Steps;
    }
    EXPECT_EQ(user.Close(), "") << "seed " << seed;
    const RandomUser::Counts& counts = user.Counted();
    sum.Steps += counts.Steps;
    sum.Dialogs += counts.Dialogs;
    sum.Confirmed += counts.Confirmed;
    sum.Nested += counts.Nested;
    sum.Faults += counts.Faults;
    sum.Deletions += counts.Deletions;
    sum.Releases += counts.Releases;
    ++seeds;
  }

  RandomUser::Counts sum;
  int seeds = 0;
};

TEST_P(RandomUserTest, EverythingIsAsTheUserWasTold) {
  constexpr unsigned kNext = 1000;
  const auto end = std::chrono::steady_clock::now() + Longer();
  unsigned seed = GetParam();
  do {
    Run(seed);
    seed += kNext;
  } while (!HasFailure() && std::chrono::steady_clock::now() < end);
  std::cout << "[   random ] " << seeds << " seeds: " << sum.Steps << " steps, " << sum.Dialogs
            << " dialogs, " << sum.Confirmed << " confirmed, " << sum.Deletions << " deletions, "
            << sum.Nested << " nested calls, " << sum.Releases << " releases, " << sum.Faults
            << " faults" << std::endl;
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomUserTest, testing::Range(1U, 9U));

}  // namespace
}  // namespace ktrv::tests
