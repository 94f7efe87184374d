#pragma once

#include <ctime>
#include <functional>
#include <vector>

#include "benchmarks/Table.h"
#include "benchmarks/UserInterfaceLoop.h"

namespace ktrv::benchmarks {

/// Seconds of several runs.
class Runs {
 public:
  void Add(const std::function<void()>& work) {
    const auto start = Clock::now();
    const std::clock_t before = std::clock();
    work();
    elapsed_.push_back(SecondsSince(start));
    processor_.push_back(static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC);
  }
  /// The medians.
  double Elapsed() const { return Median(elapsed_); }
  /// Of this process only. It varies less than the elapsed time on a busy machine.
  double Processor() const { return Median(processor_); }

 private:
  std::vector<double> elapsed_;
  std::vector<double> processor_;
};

}  // namespace ktrv::benchmarks
