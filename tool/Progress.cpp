#include "tool/Progress.h"

#include <utility>

namespace ktrv::tool {

Progress::Progress(Console& console, std::string what)
    : console_(console), what_(std::move(what)), shown_(std::chrono::steady_clock::now()) {}

void Progress::Finish(std::int64_t rows) {
  console_.Messages << (console_.IsInteractive ? "\r" : "") << rows << ' ' << what_ << '\n';
}

void Progress::Show(std::int64_t rows) {
  constexpr std::chrono::milliseconds kPause(200);
  const auto now = std::chrono::steady_clock::now();
  if (now - shown_ < kPause) return;
  shown_ = now;
  console_.Messages << '\r' << rows << ' ' << what_ << std::flush;
}

}  // namespace ktrv::tool
