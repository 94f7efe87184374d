#pragma once

#include <chrono>
#include <condition_variable>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <tuple>

#include "database/LinkFacts.h"
#include "database/Threads.h"

namespace ktrv::database {

/// Links that nobody uses, for the next who opens the same: a few, each for a while, after which a
/// thread of the store closes it. Any thread.
class LinkStore : public std::enable_shared_from_this<LinkStore> {
 public:
  /// Connection string, user and password.
  using Address = std::tuple<String, String, String>;
  using Clock = std::chrono::steady_clock;

  /// \param longest time that a link is kept
  explicit LinkStore(std::chrono::milliseconds longest) : longest_(longest) {}

  /// From here on links are kept; before, and behind Close, they are closed at once.
  void Open();

  struct Found {
    std::unique_ptr<Link> Unused;  ///< null when there is none
    Clock::duration Idle;
  };
  /// The link that was used last of those to the address.
  Found Take(const Address& address);
  void Keep(const Address& address, std::unique_ptr<Link> link);
  /// Closes those to the address.
  void Drop(const Address& address);

  std::shared_ptr<LinkFacts> FactsOf(const Address& address);

  /// Closes all, and forgets what is known of their databases. The store's thread is gone behind
  /// it.
  void Close() noexcept;

 private:
  struct Kept {
    Address To;
    std::unique_ptr<Link> Unused;
    Clock::time_point Since;
  };
  /// One of the store's threads, from the first link that is kept until none is left.
  struct Watch {
    EndFlag Ended = std::make_shared<std::atomic<bool>>(false);
    bool Stopped = false;
    bool Left = false;  ///< it closes nothing more
  };

  void StartWatch();
  void CloseInTime(Watch& watch) noexcept;

  const std::chrono::milliseconds longest_;
  std::mutex mutex_;
  std::condition_variable stopped_;
  bool open_ = false;
  std::list<Kept> kept_;  // in the order of their time
  std::map<Address, std::shared_ptr<LinkFacts>> facts_;
  std::shared_ptr<Watch> watch_;
};

}  // namespace ktrv::database
