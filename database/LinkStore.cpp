#include "database/LinkStore.h"

#include <algorithm>
#include <utility>

namespace ktrv::database {
namespace {

constexpr std::size_t kMost = 4;

}  // namespace

// Links are destroyed outside the lock, because the user-interface thread may wait for it. So they
// are declared before it.

void LinkStore::Open() {
  const std::lock_guard lock(mutex_);
  open_ = true;
}

LinkStore::Found LinkStore::Take(const Address& address) {
  const std::lock_guard lock(mutex_);
  const auto last = std::find_if(kept_.rbegin(), kept_.rend(),
                                 [&](const Kept& each) { return each.To == address; });
  if (last == kept_.rend()) return {};
  if (Clock::now() - last->Since >= longest_) return {};  // it is about to be closed
  Found found{std::move(last->Unused), last->Worked};
  kept_.erase(std::next(last).base());
  return found;
}

void LinkStore::Keep(const Address& address, std::unique_ptr<Link> link, Clock::time_point worked) {
  std::list<Kept> moved;
  moved.push_back({address, std::move(link), worked, Clock::now()});
  const std::lock_guard lock(mutex_);
  if (!open_) return;
  if (!watch_ || watch_->Left) StartWatch();
  kept_.splice(kept_.end(), moved);
  if (kept_.size() > kMost) moved.splice(moved.end(), kept_, kept_.begin());
}

void LinkStore::Drop(const Address& address) {
  std::list<Kept> dropped;
  const std::lock_guard lock(mutex_);
  for (auto each = kept_.begin(); each != kept_.end();) {
    const auto next = std::next(each);
    if (each->To == address) dropped.splice(dropped.end(), kept_, each);
    each = next;
  }
}

std::shared_ptr<LinkFacts> LinkStore::FactsOf(const Address& address) {
  const std::lock_guard lock(mutex_);
  auto& facts = facts_[address];
  if (!facts) facts = std::make_shared<LinkFacts>();
  return facts;
}

void LinkStore::Close() noexcept {
  std::list<Kept> closed;
  std::shared_ptr<Watch> watch;
  {
    const std::lock_guard lock(mutex_);
    open_ = false;
    closed.swap(kept_);
    facts_.clear();
    watch.swap(watch_);
    if (watch) watch->Stopped = true;
  }
  stopped_.notify_all();
  if (watch) Threads::OfProcess().Join(watch->State);
}

void LinkStore::StartWatch() {
  auto watch = std::make_shared<Watch>();
  Threads::OfProcess().Start(
      [mark = Threads::EndMark(watch->State), self = shared_from_this(), watch]() mutable {
        self->CloseInTime(*watch);
        self.reset();
      },
      watch->State);
  watch_ = std::move(watch);
}

void LinkStore::CloseInTime(Watch& watch) noexcept {
  std::unique_lock lock(mutex_);
  while (!watch.Stopped && !kept_.empty()) {
    const auto until = kept_.front().Since + longest_;
    if (Clock::now() < until) {
      stopped_.wait_until(lock, until);
      continue;
    }
    auto link = std::move(kept_.front().Unused);
    kept_.pop_front();
    lock.unlock();
    link.reset();
    lock.lock();
  }
  watch.Left = true;
}

}  // namespace ktrv::database
