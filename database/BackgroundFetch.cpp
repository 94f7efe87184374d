#include "database/BackgroundFetch.h"

#include <algorithm>
#include <atomic>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>
#include <variant>

namespace ktrv::database {
namespace {

constexpr std::size_t kFirstBlockRows = 50;

std::atomic<std::size_t> running = 0;

/// Counts one thread from its start to the end of all that it owns.
class RunningThread {
 public:
  RunningThread() { ++running; }
  ~RunningThread() {
    if (counts_) --running;
  }
  RunningThread(RunningThread&& other) noexcept : counts_(std::exchange(other.counts_, false)) {}

 private:
  bool counts_ = true;
};

struct Ended {
  std::optional<Error> Failure;
  EventStatus Status = EventStatus::Ok;
};

using Item = std::variant<std::vector<Column>, std::unique_ptr<RowBlock>, Ended>;

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

  /// To be called before the statement ends.
  void End() {
    const std::lock_guard lock(mutex_);
    statement_ = nullptr;
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

  // On the user-interface thread.

  void GiveUp() {
    const std::lock_guard lock(mutex_);
    givenUp_ = true;
    items_.clear();
    if (statement_) statement_->Cancel();
  }

  void Cancel() {
    GiveUp();
    {
      const std::lock_guard lock(mutex_);
      items_.push_back(Ended{std::nullopt, EventStatus::Cancelled});
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
    post_([self = shared_from_this()] { self->Deliver(); });
  }

  void Deliver() {
    Item item;
    bool more = false;
    {
      const std::lock_guard lock(mutex_);
      if (items_.empty()) {
        posted_ = false;
        return;
      }
      item = std::move(items_.front());
      items_.pop_front();
      posted_ = more = !items_.empty();
    }
    // Before the receiver is called, because it may throw.
    if (more) PostDelivery();
    if (receiver_) HandOver(item);
  }

  void HandOver(Item& item) {
    if (auto* columns = std::get_if<std::vector<Column>>(&item)) {
      receiver_->ColumnsCame(std::move(*columns));
    } else if (auto* rows = std::get_if<std::unique_ptr<RowBlock>>(&item)) {
      receiver_->RowsCame(std::move(*rows));
    } else {
      const Ended& ended = std::get<Ended>(item);
      receiver_->FetchEnded(ended.Failure ? &*ended.Failure : nullptr, ended.Status);
    }
  }

  const std::function<void(std::function<void()>)> post_;
  Receiver* receiver_;  // of the user-interface thread alone

  std::mutex mutex_;
  std::deque<Item> items_;
  bool posted_ = false;  // a closure is under way
  bool givenUp_ = false;
  Statement* statement_ = nullptr;
};

/// What the thread runs. Its members end in reverse: the count comes last, behind everything that
/// could still need the driver.
class BackgroundFetch::Worker {
 public:
  Worker(const Environment& environment, DatabaseAddress address, String text,
         std::size_t blockRows, std::shared_ptr<Exchange> exchange)
      : environment_(environment),
        address_(std::move(address)),
        text_(std::move(text)),
        blockRows_(blockRows),
        exchange_(std::move(exchange)) {}

  /// The edge of the thread: nothing may be thrown out of it.
  void operator()() noexcept {
    try {
      Ended ended;
      try {
        Fetch();
      } catch (...) {
        ended = {Error::Current(), EventStatus::ErrorsOccurred};
      }
      exchange_->Hand(std::move(ended));
    } catch (...) {
      // Not even the failure could be handed over: there is nobody left to tell.
    }
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

  RunningThread counted_;
  Environment environment_;
  DatabaseAddress address_;
  String text_;
  std::size_t blockRows_;
  std::shared_ptr<Exchange> exchange_;
};

BackgroundFetch::BackgroundFetch(const Environment& environment, DatabaseAddress address,
                                 String text, std::size_t blockRows, Receiver& receiver)
    : exchange_(std::make_shared<Exchange>(environment.Post, receiver)) {
  std::thread(Worker(environment, std::move(address), std::move(text), blockRows, exchange_))
      .detach();
}

BackgroundFetch::~BackgroundFetch() {
  exchange_->Leave();
}

void BackgroundFetch::Cancel() {
  exchange_->Cancel();
}

std::size_t BackgroundFetch::Running() noexcept {
  return running;
}

}  // namespace ktrv::database
