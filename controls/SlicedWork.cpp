#include "controls/SlicedWork.h"

#include <chrono>
#include <utility>

namespace ktrv::controls {

void SlicedWork::Start(Screen& screen, Portion portion) {
  portion_ = std::make_shared<Portion>(std::move(portion));
  RunSlice(screen);
}

void SlicedWork::RunSlice(Screen& screen) {
  constexpr std::chrono::milliseconds kSlice{20};
  const auto end = std::chrono::steady_clock::now() + kSlice;
  // A portion may stop or replace the work.
  const std::shared_ptr<Portion> portion = portion_;
  const auto isCurrent = [&] { return portion_ == portion; };
  try {
    while (isCurrent() && std::chrono::steady_clock::now() < end) {
      if (!(*portion)() && isCurrent()) portion_.reset();
    }
    if (!isCurrent()) return;
    screen.Post([this, &screen, waiting = std::weak_ptr(portion)] {
      if (!waiting.expired()) RunSlice(screen);
    });
  } catch (...) {
    if (isCurrent()) portion_.reset();
    throw;
  }
}

}  // namespace ktrv::controls
