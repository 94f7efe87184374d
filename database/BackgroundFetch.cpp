#include "database/BackgroundFetch.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <variant>

#include "database/Threads.h"

namespace ktrv::database {
namespace {

constexpr std::size_t kFirstBlockRows = 50;

struct Ended {
  std::optional<Error> Failure;
  EventStatus Status = EventStatus::Ok;
};

using Item = std::variant<std::vector<Column>, std::unique_ptr<RowBlock>, Ended>;

constexpr std::chrono::milliseconds kPatience{100};
constexpr int kMostCancels = 8;  // at intervals that double: some 25 seconds

}  // namespace

/// What the fetching thread and the user-interface thread share. Only one closure is under way at a
/// time and hands over one item, so a slow user interface is neither flooded nor held up.
class BackgroundFetch::Exchange : public std::enable_shared_from_this<Exchange> {
 public:
  Exchange(std::function<void(std::function<void()>)> post, Receiver& receiver)
      : post_(std::move(post)), receiver_(&receiver) {}

  // On the fetching thread.

  /// Makes the statement the one to be cancelled. \return false when nobody wants the rows any
  /// more.
  bool Begin(Statement& statement) {
    const std::lock_guard lock(mutex_);
    statement_ = &statement;
    return !givenUp_;
  }

  /// To be called before the statement ends. Waits for a cancel that is under way.
  void End() {
    std::unique_lock lock(mutex_);
    statement_ = nullptr;
    changed_.notify_all();
    changed_.wait(lock, [this] { return !cancelling_; });
  }

  /// \return false when nobody wants the rows any more.
  bool Hand(Item item) {
    {
      const std::lock_guard lock(mutex_);
      if (givenUp_) return false;
      items_.push_back(std::move(item));
      if (std::exchange(posted_, true)) return true;
    }
    PostDelivery();
    return true;
  }

  /// The last that is handed over: without it a list would be loading for ever, so it is tried
  /// until it works.
  void HandEnd(Ended ended) noexcept {
    while (!TryToHandEnd(ended)) std::this_thread::sleep_for(kPatience);
  }

  // On the user-interface thread.

  /// Never waits for the database.
  void GiveUp() {
    std::unique_lock lock(mutex_);
    items_.clear();
    end_.reset();
    if (std::exchange(givenUp_, true) || !statement_) return;
    if (!StartCancelling()) CancelOnce(lock);
  }

  void Cancel() {
    GiveUp();
    {
      const std::lock_guard lock(mutex_);
      end_ = Ended{std::nullopt, EventStatus::Cancelled};
      if (std::exchange(posted_, true)) return;
    }
    PostDelivery();
  }

  void Leave() {
    receiver_ = nullptr;
    GiveUp();
  }

 private:
  /// Cancels on a thread of its own, because some drivers connect anew for it, and some wait for
  /// the statement. \return false when there is no thread to be had
  bool StartCancelling() noexcept {
    try {
      auto ended = std::make_shared<std::atomic<bool>>(false);
      Threads::OfProcess().Start(
          [mark = Threads::EndMark(ended), self = shared_from_this()]() mutable {
            self->CancelUntilEnded();
            self.reset();  // before the mark, behind which the driver may go away
          },
          ended);
      return true;
    } catch (...) {
      return false;
    }
  }

  /// More than once, because an engine that was told before it had begun does not remember it.
  void CancelUntilEnded() noexcept {
    std::unique_lock lock(mutex_);
    auto patience = kPatience;
    for (int tries = 0; tries < kMostCancels && statement_; ++tries) {
      CancelOnce(lock);
      changed_.wait_for(lock, patience, [this] { return !statement_; });
      patience *= 2;
    }
  }

  /// The lock is given up meanwhile: who waits for it may be the user.
  void CancelOnce(std::unique_lock<std::mutex>& lock) noexcept {
    cancelling_ = true;
    Statement& statement = *statement_;
    lock.unlock();
    statement.Cancel();
    lock.lock();
    cancelling_ = false;
    changed_.notify_all();
  }

  void PostDelivery() {
    try {
      post_([self = shared_from_this()] { self->Deliver(); });
    } catch (...) {
      const std::lock_guard lock(mutex_);
      posted_ = false;
      throw;
    }
  }

  bool TryToHandEnd(Ended& ended) noexcept {
    {
      const std::lock_guard lock(mutex_);
      if (givenUp_) return true;
      if (!end_) end_ = std::move(ended);
      if (std::exchange(posted_, true)) return true;
    }
    try {
      PostDelivery();
      return true;
    } catch (...) {
      return false;
    }
  }

  void Deliver() {
    Item item;
    bool more = false;
    {
      const std::lock_guard lock(mutex_);
      if (!items_.empty()) {
        item = std::move(items_.front());
        items_.pop_front();
      } else if (end_) {
        item = *std::exchange(end_, std::nullopt);
      } else {
        posted_ = false;
        return;
      }
      posted_ = more = !items_.empty() || end_;
    }
    bool taken = false;
    try {
      // Before the receiver is called, because it may throw.
      if (more) PostDelivery();
      taken = TakeIn(item);
    } catch (...) {
      GiveUp();
      item = Ended{Error::Current(), EventStatus::ErrorsOccurred};
    }
    if (taken && receiver_) receiver_->RowsTaken();
    if (const auto* ended = std::get_if<Ended>(&item)) TellEnd(*ended);
  }

  /// \return whether it was rows.
  bool TakeIn(Item& item) const {
    if (!receiver_) return false;
    if (auto* columns = std::get_if<std::vector<Column>>(&item)) {
      receiver_->ColumnsCame(std::move(*columns));
    } else if (auto* rows = std::get_if<std::unique_ptr<RowBlock>>(&item)) {
      receiver_->RowsCame(std::move(*rows));
      return true;
    }
    return false;
  }

  void TellEnd(const Ended& ended) {
    if (Receiver* const receiver = std::exchange(receiver_, nullptr)) {
      receiver->FetchEnded(ended.Failure ? &*ended.Failure : nullptr, ended.Status);
    }
  }

  const std::function<void(std::function<void()>)> post_;
  Receiver* receiver_;  // of the user-interface thread alone

  std::mutex mutex_;
  std::condition_variable changed_;  // statement_ or cancelling_
  std::deque<Item> items_;
  std::optional<Ended> end_;  // follows the items; needs no memory of its own
  bool posted_ = false;       // a closure is under way
  bool givenUp_ = false;
  Statement* statement_ = nullptr;
  bool cancelling_ = false;  // the statement must not end
};

/// What the thread runs. Its members end in reverse: the mark comes last, behind everything that
/// could still need the driver.
class BackgroundFetch::Worker {
 public:
  Worker(const Environment& environment, DatabaseAddress address, String text,
         std::size_t blockRows, std::shared_ptr<Exchange> exchange, EndFlag ended)
      : endMark_(std::move(ended)),
        environment_(environment),
        address_(std::move(address)),
        text_(std::move(text)),
        blockRows_(blockRows),
        exchange_(std::move(exchange)) {}

  /// The edge of the thread: nothing may be thrown out of it.
  void operator()() noexcept {
    Ended ended;
    try {
      Fetch();
    } catch (...) {
      ended = {Error::Current(), EventStatus::ErrorsOccurred};
    }
    exchange_->HandEnd(std::move(ended));
  }

 private:
  void Fetch() const {
    const auto link = address_.Open(environment_);
    const auto statement = link->Prepare(text_, {});
    struct Ending {
      Exchange& Of;
      ~Ending() { Of.End(); }
    } const ending{*exchange_};
    if (!exchange_->Begin(*statement)) return;
    statement->Execute({});
    if (!exchange_->Hand(statement->Columns())) return;
    std::size_t rows = std::min(blockRows_, kFirstBlockRows);
    while (auto block = statement->Fetch(rows)) {
      if (!exchange_->Hand(std::move(block))) return;
      rows = blockRows_;
    }
  }

  Threads::EndMark endMark_;
  Environment environment_;
  DatabaseAddress address_;
  String text_;
  std::size_t blockRows_;
  std::shared_ptr<Exchange> exchange_;
};

BackgroundFetch::BackgroundFetch(const Environment& environment, DatabaseAddress address,
                                 String text, std::size_t blockRows, Receiver& receiver)
    : exchange_(std::make_shared<Exchange>(environment.Post, receiver)) {
  auto ended = std::make_shared<std::atomic<bool>>(false);
  Threads::OfProcess().Start(
      Worker(environment, std::move(address), std::move(text), blockRows, exchange_, ended), ended);
}

BackgroundFetch::~BackgroundFetch() {
  exchange_->Leave();
}

void BackgroundFetch::Cancel() {
  exchange_->Cancel();
}

std::size_t BackgroundFetch::Running() noexcept {
  return Threads::OfProcess().Count();
}

}  // namespace ktrv::database
