#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/line/Host.h"

namespace ktrv::tests {

/// What a user does while the line fails, once and again.
struct FaultTask {
  std::string Name;
  /// \param number of the attempt, for what has to be told apart
  std::function<void(Host&, int number)> Prepare;
  /// \throws std::runtime_error when it was not done
  std::function<void(Host&, int number)> Act;
  std::function<void(Host&)> Leave;
  /// What is wrong with what is stored; empty when nothing is. \param confirmed whether the user
  /// was told that it is stored
  std::function<std::string(database::Connection&, const Host&, int number, bool confirmed)> Check;
};

inline constexpr int kContactsOfFaults = 1200;

const std::vector<FaultTask>& FaultTasks();

}  // namespace ktrv::tests
