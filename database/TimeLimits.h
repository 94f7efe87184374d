#pragma once

#include <chrono>

namespace ktrv::database {

/// Time limits of database calls; the defaults are ADO's. 0 means no limit.
struct TimeLimits {
  std::chrono::milliseconds Opening = std::chrono::seconds(15);
  /// For a statement including its rows, and for each other call of a link.
  std::chrono::milliseconds Statement = std::chrono::seconds(30);
  /// For the test whether a link still works. If it takes longer, a new link is opened.
  std::chrono::milliseconds Answer = std::chrono::seconds(3);
};

}  // namespace ktrv::database
