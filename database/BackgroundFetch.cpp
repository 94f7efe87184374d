#include "database/BackgroundFetch.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <deque>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <variant>

#include "common/ScopeExit.h"
#include "database/Canceller.h"
#include "database/Threads.h"

namespace ktrv::database {
namespace {

constexpr std::size_t kFirstBlockRows = 50;

struct Ended {
  std::optional<Error> Failure;
  EventStatus Status = EventStatus::Ok;
};

using Item = std::variant<std::vector<Column>, std::unique_ptr<RowBlock>, Ended>;

constexpr std::chrono::milliseconds kRetryAfter{100};

}  // namespace

/// State shared by the fetching thread and the user-interface thread. At most one closure is posted
/// at a time and delivers one item, so the message queue is not flooded and the user interface
/// stays responsive.
class BackgroundFetch::Exchange : public std::enable_shared_from_this<Exchange> {
 public:
  Exchange(std::function<void(std::function<void()>)> post, std::shared_ptr<ThreadState> thread,
           Receiver& receiver)
      : post_(std::move(post)), thread_(std::move(thread)), receiver_(&receiver) {}

  // On the fetching thread.

  /// Registers the statement for cancellation. \return false if the fetch is cancelled already.
  /// \throws std::system_error, std::bad_alloc
  bool Begin(Statement& statement) {
    {
      const std::lock_guard lock(mutex_);
      if (givenUp_) return false;
    }
    canceller_->Begin(statement);
    canceller_->StartThread();
    return true;
  }

  /// Call before the statement is destroyed. Waits for a running call of Cancel.
  void End() { canceller_->End(); }

  /// Queues an item for delivery. \return false if the fetch is cancelled
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

  /// Queues the end of the fetch. Retries until it succeeds, because otherwise the list would stay
  /// in the loading state.
  void HandEnd(Ended ended) noexcept {
    while (!TryToHandEnd(ended)) std::this_thread::sleep_for(kRetryAfter);
  }

  // On the user-interface thread.

  /// Cancels the fetch; never waits for the database.
  void GiveUp() {
    {
      const std::lock_guard lock(mutex_);
      items_.clear();
      end_.reset();
      if (std::exchange(givenUp_, true)) return;
    }
    thread_->GivenUp = ThreadState::Clock::now();
    canceller_->Tell();
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
      // Before calling the receiver, which may throw.
      if (more) PostDelivery();
      taken = TakeIn(item);
    } catch (...) {
      GiveUp();
      item = Ended{Error::Current(), EventStatus::ErrorsOccurred};
    }
    if (taken && receiver_) receiver_->RowsTaken();
    if (const auto* ended = std::get_if<Ended>(&item)) TellEnd(*ended);
  }

  /// \return whether the item was a block of rows
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
  const std::shared_ptr<ThreadState> thread_;
  const std::shared_ptr<Canceller> canceller_ = std::make_shared<Canceller>();
  Receiver* receiver_;  // used on the user-interface thread only

  std::mutex mutex_;
  std::deque<Item> items_;
  std::optional<Ended> end_;  // delivered after items_; allocates no memory
  bool posted_ = false;       // a closure is posted
  bool givenUp_ = false;
};

/// The function of the fetching thread. Members are destroyed in reverse order: endMark_ last,
/// after everything that needs the driver.
class BackgroundFetch::Worker {
 public:
  Worker(const Environment& environment, DatabaseAddress address, String text,
         std::size_t blockRows, std::shared_ptr<Exchange> exchange,
         std::shared_ptr<ThreadState> state)
      : endMark_(std::move(state)),
        environment_(environment),
        address_(std::move(address)),
        text_(std::move(text)),
        blockRows_(blockRows),
        exchange_(std::move(exchange)) {}

  /// The thread's entry function; must not throw.
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
    Threads::OfProcess().PassUnlessManyHang();
    const auto link = address_.Open(environment_);
    const auto statement = link->Prepare(text_, {});
    statement->LiftTimeLimit();
    const ScopeExit end([this] { exchange_->End(); });
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
                                 String text, std::size_t blockRows, Receiver& receiver) {
  auto state = std::make_shared<ThreadState>();
  exchange_ = std::make_shared<Exchange>(environment.Post, state, receiver);
  Threads::OfProcess().Start(
      Worker(environment, std::move(address), std::move(text), blockRows, exchange_, state), state);
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
