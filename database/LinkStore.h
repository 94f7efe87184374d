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

/// Unused links, for the next Open with the same address: at most four, each for a limited time. A
/// thread of the store closes them after that. Thread-safe.
class LinkStore : public std::enable_shared_from_this<LinkStore> {
 public:
  /// Connection string, user and password.
  using Address = std::tuple<String, String, String>;
  using Clock = std::chrono::steady_clock;

  /// \param longest maximum time to keep a link
  explicit LinkStore(std::chrono::milliseconds longest) : longest_(longest) {}

  /// Starts keeping links. Before it and after Close, they are closed at once.
  void Open();

  struct Found {
    std::unique_ptr<Link> Unused;  ///< null if there is none
    Clock::time_point Worked;      ///< as given to Keep
  };
  /// The most recently used link to the address.
  Found Take(const Address& address);
  /// \param worked when the link was last known to be alive
  void Keep(const Address& address, std::unique_ptr<Link> link, Clock::time_point worked);
  /// Closes the kept links to the address.
  void Drop(const Address& address);

  std::shared_ptr<LinkFacts> FactsOf(const Address& address);

  /// Closes all links, clears the cached facts, and joins the store's thread.
  void Close() noexcept;

 private:
  struct Kept {
    Address To;
    std::unique_ptr<Link> Unused;
    Clock::time_point Worked;
    Clock::time_point Since;
  };
  /// A thread of the store; runs from the first kept link until none is left.
  struct Watch {
    std::shared_ptr<ThreadState> State = std::make_shared<ThreadState>();
    bool Stopped = false;
    bool Left = false;  ///< it closes no more links
  };

  void StartWatch();
  void CloseInTime(Watch& watch) noexcept;

  const std::chrono::milliseconds longest_;
  std::mutex mutex_;
  std::condition_variable stopped_;
  bool open_ = false;
  std::list<Kept> kept_;  // sorted by time
  std::map<Address, std::shared_ptr<LinkFacts>> facts_;
  std::shared_ptr<Watch> watch_;
};

}  // namespace ktrv::database
