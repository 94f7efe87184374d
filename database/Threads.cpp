#include "database/Threads.h"

#include <algorithm>

#include "common/Error.h"

namespace ktrv::database {
namespace {

constexpr std::ptrdiff_t kMostHanging = 32;
constexpr std::chrono::seconds kHangs{2};  // longer than a usual cancel takes

}  // namespace

Threads& Threads::OfProcess() {
  static auto* const threads = new Threads;
  return *threads;
}

void Threads::Join(const std::shared_ptr<ThreadState>& state) noexcept {
  std::list<Entry> joined;
  {
    const std::lock_guard lock(mutex_);
    const auto entry = std::find_if(threads_.begin(), threads_.end(),
                                    [&](const Entry& each) { return each.State == state; });
    if (entry == threads_.end()) return;
    joined.splice(joined.begin(), threads_, entry);
  }
  joined.front().Thread.join();
}

std::size_t Threads::Count() {
  const std::lock_guard lock(mutex_);
  JoinEnded();
  return threads_.size();
}

void Threads::PassUnlessManyHang() {
  const std::lock_guard lock(mutex_);
  const auto since = ThreadState::Clock::now() - kHangs;
  const auto hanging = std::count_if(threads_.begin(), threads_.end(), [&](const Entry& each) {
    return each.State->GivenUp.load() < since && !each.State->Ended;
  });
  if (hanging < kMostHanging) return;
  throw Error(ErrorNumber::TimedOut, u"Too many calls of the database have not been answered");
}

void Threads::JoinEnded() {
  std::erase_if(threads_, [](Entry& entry) {
    if (!entry.State->Ended) return false;
    entry.Thread.join();
    return true;
  });
}

}  // namespace ktrv::database
