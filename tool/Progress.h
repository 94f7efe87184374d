#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

#include "tool/Console.h"

namespace ktrv::tool {

/// Tells how far a job is: on a terminal in one line that changes, elsewhere only at the end.
class Progress {
 public:
  /// \param what was done to the rows: "exported"
  Progress(Console& console, std::string what);

  /// All rows; 0: not known.
  std::int64_t Total = 0;
  /// How much is done in percent, if the rows do not tell; empty: not known.
  std::function<int()> Percent;
  /// Between two changes of the line.
  std::chrono::milliseconds Pause{200};

  /// Cheap; call it for each row.
  void Count(std::int64_t rows) {
    if (console_.IsInteractive && rows % kStep == 0) Show(rows);
  }
  /// Empties the line, for jobs whose result says enough.
  void Clear();
  /// Prints the final number.
  void Finish(std::int64_t rows);

 private:
  static constexpr std::int64_t kStep = 1000;
  void Show(std::int64_t rows);
  /// Replaces the line.
  void Print(const std::string& line);

  Console& console_;
  std::string what_;
  std::chrono::steady_clock::time_point shown_;
  std::size_t width_ = 0;  ///< of the line
};

}  // namespace ktrv::tool
