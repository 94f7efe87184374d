#pragma once

#include <cstdint>

namespace ktrv::tests {

/// Counts the threads that this thread starts, and lets one of them fail to start: std::thread then
/// throws std::system_error.
class FailingThreads {
 public:
  /// Starts counting anew. \param thread the one that fails, counted from 1; 0 for none.
  static void FailAt(std::int64_t thread);
  static std::int64_t Counted();
  static bool HasFailed();
};

}  // namespace ktrv::tests
