#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "tool/Console.h"

namespace ktrv::tool {

/// Tells how far a job is: on a terminal in one line that changes, elsewhere only at the end.
class Progress {
 public:
  /// \param what was done to the rows: "exported"
  Progress(Console& console, std::string what);

  /// Cheap; call it for each row.
  void Count(std::int64_t rows) {
    if (console_.IsInteractive && rows % kStep == 0) Show(rows);
  }
  /// Prints the final number.
  void Finish(std::int64_t rows);

 private:
  static constexpr std::int64_t kStep = 1000;
  void Show(std::int64_t rows);

  Console& console_;
  std::string what_;
  std::chrono::steady_clock::time_point shown_;
};

}  // namespace ktrv::tool
