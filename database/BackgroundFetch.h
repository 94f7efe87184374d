#pragma once

#include <memory>
#include <vector>

#include "common/Error.h"
#include "database/Connection.h"

namespace ktrv::database {

/// Fetches the rows of a query on its own thread and link, and delivers them block by block on the
/// user-interface thread. Use it on that thread only.
class BackgroundFetch {
 public:
  /// Receives the rows. Called on the user-interface thread from short closures, and never after
  /// the fetch object is destroyed. Each call may destroy the fetch.
  class Receiver {
   public:
    virtual ~Receiver() = default;
    // An exception from these two ends the fetch with status ErrorsOccurred.
    virtual void ColumnsCame(std::vector<Column> columns) = 0;
    virtual void RowsCame(std::unique_ptr<RowBlock> rows) = 0;
    /// Called after each RowsCame. Exceptions propagate to the message loop.
    virtual void RowsTaken() = 0;
    /// The last call, exactly once. \param error the failure if status is ErrorsOccurred, else null
    virtual void FetchEnded(const Error* error, EventStatus status) = 0;
  };

  /// Starts the fetch. \param blockRows rows per block, at least 1. The first block is smaller, so
  /// that a list shows its first rows early.
  BackgroundFetch(const Environment& environment, DatabaseAddress address, String text,
                  std::size_t blockRows, Receiver& receiver);

  /// Cancels a running fetch without waiting for the database.
  ~BackgroundFetch();
  BackgroundFetch(const BackgroundFetch&) = delete;
  BackgroundFetch& operator=(const BackgroundFetch&) = delete;

  /// Cancels without waiting. No more rows are delivered; FetchEnded follows with status Cancelled.
  void Cancel();

  /// The number of background threads in this process, including those of cancelled fetches. Unless
  /// it is 0, the DLL must not be unloaded and drivers must not be destroyed.
  static std::size_t Running() noexcept;

 private:
  class Exchange;
  class Worker;
  std::shared_ptr<Exchange> exchange_;
};

}  // namespace ktrv::database
