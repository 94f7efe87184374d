#pragma once

#include <memory>
#include <vector>

#include "common/Error.h"
#include "database/Connection.h"

namespace ktrv::database {

/// Reads the rows of a query on a thread and a link of its own and hands them over on the
/// user-interface thread, block by block. Belongs to the user-interface thread.
class BackgroundFetch {
 public:
  /// Who gets the rows. Called on the user-interface thread, from closures of a moment each, and
  /// never again once the fetch object is gone. Each call may destroy the fetch.
  class Receiver {
   public:
    virtual ~Receiver() = default;
    // The rows that cannot be taken in are lost: what these two throw ends the fetch as failed.
    virtual void ColumnsCame(std::vector<Column> columns) = 0;
    virtual void RowsCame(std::unique_ptr<RowBlock> rows) = 0;
    /// Follows each RowsCame. What it throws is the user-interface thread's business.
    virtual void RowsTaken() = 0;
    /// The last call, exactly once. \param error the failure when status is ErrorsOccurred.
    virtual void FetchEnded(const Error* error, EventStatus status) = 0;
  };

  /// Starts the fetch. \param blockRows rows a block, 1 or more; the first block is smaller, so
  /// that a list shows its first rows early.
  BackgroundFetch(const Environment& environment, DatabaseAddress address, String text,
                  std::size_t blockRows, Receiver& receiver);

  /// Gives up what still runs, without waiting for the database.
  ~BackgroundFetch();
  BackgroundFetch(const BackgroundFetch&) = delete;
  BackgroundFetch& operator=(const BackgroundFetch&) = delete;

  /// Gives up without waiting: no more rows come, FetchEnded comes later with status Cancelled.
  void Cancel();

  /// Threads of this process that still run, those of fetches given up included: while it is not 0,
  /// the code may not be unloaded and the drivers may not go away.
  static std::size_t Running() noexcept;

 private:
  class Exchange;
  class Worker;
  std::shared_ptr<Exchange> exchange_;
};

}  // namespace ktrv::database
