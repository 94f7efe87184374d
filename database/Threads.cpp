#include "database/Threads.h"

#include <algorithm>

namespace ktrv::database {

Threads& Threads::OfProcess() {
  static auto* const threads = new Threads;
  return *threads;
}

void Threads::Join(const EndFlag& ended) noexcept {
  std::list<Entry> joined;
  {
    const std::lock_guard lock(mutex_);
    const auto entry = std::find_if(threads_.begin(), threads_.end(),
                                    [&](const Entry& each) { return each.Ended == ended; });
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

void Threads::JoinEnded() {
  std::erase_if(threads_, [](Entry& entry) {
    if (!*entry.Ended) return false;
    entry.Thread.join();
    return true;
  });
}

}  // namespace ktrv::database
