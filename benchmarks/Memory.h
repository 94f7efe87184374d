#pragma once

#include <functional>
#include <vector>

namespace ktrv::benchmarks {

/// Bytes of this process that are in memory.
struct Memory {
  double Now = 0;
  double Peak = 0;  ///< the most since the process began
};
Memory MemoryInUse();

/// Runs the function in a process of its own, so that memory that earlier measurements left behind
/// does not count, and gives back the numbers that it returned. To be called while no other thread
/// runs. \throws std::runtime_error when the process fails.
std::vector<double> InOwnProcess(const std::function<std::vector<double>()>& measure);

}  // namespace ktrv::benchmarks
