#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/native/adversary/Stage.h"

namespace ktrv::tests {

/// Something that a user does with the address book, from the first click to the last.
struct UserTask {
  std::string Name;
  /// \return whether the user was told that it was done: OK closed the dialog, or what was deleted
  /// is gone from the list.
  std::function<bool(Stage&)> Act;
  /// What the host reads afterwards; empty where it reads nothing.
  std::function<String(Stage&)> Results;
};

const std::vector<UserTask>& UserTasks();

}  // namespace ktrv::tests
