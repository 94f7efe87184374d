#include "tests/adoserver/Cursor.h"

#include <chrono>
#include <utility>

namespace ktrv::adoserver {

void Cursor::Run() {
  statement_->ExecuteToFirstResult(values_);
  rowsAffected_ = statement_->RowsAffected();
  if (!statement_->Columns().empty()) rows_ = statement_->Fetch(1);
  columns_ = statement_->Columns();  // last: they tell that it is open
}

bool Cursor::ToNextResult() {
  if (!statement_ || !statement_->ToNextResult()) return false;
  rowsAffected_ = statement_->RowsAffected();
  return true;
}

void Cursor::RunInBackground() {
  worker_ = std::thread([this] {
    try {
      Run();
    } catch (...) {
      failure_ = Error::Current();
    }
    ended_ = true;
  });
}

bool Cursor::IsRunning() {
  if (!worker_.joinable()) return false;
  if (!ended_) return true;
  Join();
  return false;
}

void Cursor::Cancel() {
  if (canceller_.joinable()) return;
  canceller_ = std::thread([this] {
    while (!ended_) {
      statement_->Cancel();
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
  });
}

void Cursor::Join() {
  worker_.join();
  if (canceller_.joinable()) canceller_.join();
}

std::optional<Error> Cursor::TakeFailure() {
  return std::exchange(failure_, std::nullopt);
}

void Cursor::Close() {
  if (worker_.joinable()) {
    Cancel();
    Join();
  }
  columns_.clear();
  rows_.reset();
  statement_.reset();
}

void Cursor::MoveNext() {
  constexpr std::size_t kBlockRows = 100;
  if (++row_ < rows_->Rows()) return;
  rows_ = statement_ ? statement_->Fetch(kBlockRows) : nullptr;
  row_ = 0;
}

}  // namespace ktrv::adoserver
