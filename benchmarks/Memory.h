#pragma once

#include <functional>
#include <vector>

namespace ktrv::benchmarks {

/// Resident memory of this process in bytes.
struct Memory {
  double Now = 0;
  double Peak = 0;  ///< the maximum since the process started
};
Memory MemoryInUse();

/// Runs the function in a child process, so that memory of earlier measurements does not count, and
/// returns its result. Call it while no other thread is running. \throws std::runtime_error if the
/// process fails
std::vector<double> InOwnProcess(const std::function<std::vector<double>()>& measure);

}  // namespace ktrv::benchmarks
