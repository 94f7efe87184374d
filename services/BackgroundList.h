#pragma once

#include <memory>

#include "database/Recordset.h"
#include "services/BookDatabase.h"

namespace ktrv {

/// A list whose rows are fetched by a query in the background. A fetch that was cancelled or
/// replaced raises no more events.
class BackgroundList {
 public:
  virtual ~BackgroundList() = default;

  bool IsLoading() const { return state_ == State::Loading; }
  /// Cancels a running fetch. The rows so far and the state stay.
  void Cancel();

 protected:
  enum class State { Idle, Loading, Complete, Failed };

  /// \param database must outlive the list
  explicit BackgroundList(BookDatabase& database) : database_(database) {}

  /// Starts the fetch on a link of its own; sets rows_ and the state Loading. \return the former
  /// rows; keep them until the grid is bound to the new ones. \throws Error; nothing has changed
  /// then
  std::unique_ptr<database::Recordset> Fetch(const String& query, std::int64_t blockRows = 1000);

  /// Rows have arrived. \param rows all so far
  virtual void FetchProgress(std::int64_t rows) = 0;
  /// The fetch has ended; the state is Complete or Failed. \param error null if complete
  virtual void FetchComplete(const Error* error) = 0;

  BookDatabase& database_;
  std::unique_ptr<database::Recordset> rows_;
  State state_ = State::Idle;
};

}  // namespace ktrv
