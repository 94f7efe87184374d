#pragma once

#include <cstdint>

namespace ktrv::tests {

/// Counts this thread's allocations by operator new, and lets one of them fail.
///
///   FailingAllocations::FailAt(7);
///   { FailingAllocations::Scope counted; ... }   // the seventh in here throws std::bad_alloc
class FailingAllocations {
 public:
  /// Starts counting anew. \param allocation the one that fails, counted from 1; 0 for none.
  static void FailAt(std::int64_t allocation);
  static std::int64_t Counted();
  static bool HasFailed();
  /// Blocks of all threads that are allocated now.
  static std::int64_t Alive();
  /// Their bytes, and the most there were at a time since LowerPeak.
  static std::int64_t AliveBytes();
  static std::int64_t PeakBytes();
  static void LowerPeak();

  /// While one lives on this thread, allocations are counted.
  class Scope {
   public:
    explicit Scope(bool counts = true);
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    bool before_;
  };
};

}  // namespace ktrv::tests
