#pragma once

#include <atomic>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include "common/Error.h"
#include "database/odbc/OdbcStatement.h"

namespace ktrv::adoserver {

/// One execution of a text and its rows, forward only. Belongs to one thread, and may do its work
/// on another one meanwhile.
class Cursor {
 public:
  Cursor(std::unique_ptr<database::odbc::OdbcStatement> statement, std::vector<Variant> values)
      : statement_(std::move(statement)), values_(std::move(values)) {}
  /// Rows that are there already.
  Cursor(std::vector<database::Column> columns, std::unique_ptr<database::RowBlock> rows)
      : columns_(std::move(columns)), rows_(std::move(rows)) {}
  ~Cursor() { Close(); }
  Cursor(const Cursor&) = delete;
  Cursor& operator=(const Cursor&) = delete;

  /// Executes, up to the first row, as ADO stands on it after opening. \throws Error
  void Run();
  void RunInBackground();
  /// Goes on to what follows the result, which must be a count: as ADO does, nothing of it is known
  /// before. \return whether there is more. \throws Error
  bool ToNextResult();
  bool IsRunning();
  /// Cancels what runs in the background, and repeats it until that has ended: a driver ignores a
  /// cancel that arrives before the statement. Does not block.
  void Cancel();
  /// What ended the work in the background; told once.
  std::optional<Error> TakeFailure();

  /// Cancels what runs, waits for its end and frees the rows.
  void Close();

  /// Whether there are, or were, rows to read.
  bool IsOpen() const { return !columns_.empty(); }
  const std::vector<database::Column>& Columns() const { return columns_; }
  std::int64_t RowsAffected() const { return rowsAffected_; }

  bool AtEnd() const { return !rows_; }
  /// Of the current row. \pre !AtEnd()
  std::optional<StringView> Cell(std::size_t column) const { return rows_->Cell(row_, column); }
  /// \pre !AtEnd() \throws Error
  void MoveNext();

 private:
  void Join();

  std::unique_ptr<database::odbc::OdbcStatement> statement_;
  std::vector<Variant> values_;
  std::thread worker_;
  std::thread canceller_;
  std::atomic<bool> ended_ = false;
  std::optional<Error> failure_;
  std::vector<database::Column> columns_;
  std::int64_t rowsAffected_ = -1;
  std::unique_ptr<database::RowBlock> rows_;
  std::size_t row_ = 0;
};

}  // namespace ktrv::adoserver
