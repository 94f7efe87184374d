#include "tool/Progress.h"

#include <algorithm>
#include <utility>

namespace ktrv::tool {

Progress::Progress(Console& console, std::string what)
    : console_(console), what_(std::move(what)), shown_(std::chrono::steady_clock::now()) {}

void Progress::Finish(std::int64_t rows) {
  Print(std::to_string(rows) + ' ' + what_);
  console_.Messages << '\n';
}

void Progress::Clear() {
  if (width_ == 0) return;
  Print({});
  console_.Messages << '\r' << std::flush;
}

void Progress::Show(std::int64_t rows) {
  const auto now = std::chrono::steady_clock::now();
  if (now - shown_ < Pause) return;
  shown_ = now;
  std::string line = std::to_string(rows);
  if (Total > 0) line += " of " + std::to_string(Total);
  line += ' ' + what_;
  if (Total > 0 || Percent) {
    const auto percent = Total > 0 ? rows * 100 / Total : Percent();
    line += " (" + std::to_string(std::min<std::int64_t>(percent, 100)) + " %)";
  }
  Print(line);
}

void Progress::Print(const std::string& line) {
  if (console_.IsInteractive) console_.Messages << '\r';
  console_.Messages << line;
  if (line.size() < width_) console_.Messages << std::string(width_ - line.size(), ' ');
  width_ = line.size();
  console_.Messages << std::flush;
}

}  // namespace ktrv::tool
