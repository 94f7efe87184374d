#include "services/BackgroundList.h"

namespace ktrv {

void BackgroundList::Cancel() {
  if (!rows_) return;
  rows_->FetchProgress = nullptr;
  rows_->FetchComplete = nullptr;
  rows_->Cancel();
}

std::unique_ptr<database::Recordset> BackgroundList::Fetch(const String& query,
                                                           std::int64_t blockRows) {
  auto rows = std::make_unique<database::Recordset>(database_.Environment);
  rows->Location = database::CursorLocation::Client;
  rows->BackgroundFetchSize = blockRows;
  rows->FetchProgress = [this](std::int64_t progress, std::int64_t) { FetchProgress(progress); };
  rows->FetchComplete = [this](const Error* error, database::EventStatus) {
    state_ = error ? State::Failed : State::Complete;
    FetchComplete(error);
  };
  rows->Open(query, database_.ConnectionString,
             {.Cursor = database::CursorType::Keyset,
              .Lock = database::LockType::Optimistic,
              .Async = true});
  rows->Disconnect();
  state_ = State::Loading;
  rows_.swap(rows);
  return rows;
}

}  // namespace ktrv
