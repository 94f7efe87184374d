#include "windows/base/Entry.h"

#include <utility>

namespace ktrv::windows {
namespace {

struct Waiting {
  void (*Action)(void* subject) noexcept = nullptr;
  void* Subject = nullptr;
};

Waiting& OfThisThread() noexcept {
  thread_local Waiting waiting;
  return waiting;
}

}  // namespace

int& Entry::Depth() noexcept {
  thread_local int depth = 0;
  return depth;
}

bool Entry::WhenLeft(void (*action)(void* subject) noexcept, void* subject) noexcept {
  if (OfThisThread().Action) return false;
  OfThisThread() = {action, subject};
  return true;
}

void Entry::RunWaiting() noexcept {
  const Waiting waiting = std::exchange(OfThisThread(), {});
  if (waiting.Action) waiting.Action(waiting.Subject);
}

}  // namespace ktrv::windows
