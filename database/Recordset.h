#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "common/Error.h"
#include "database/Connection.h"
#include "database/NewRow.h"
#include "database/RowBlock.h"

namespace ktrv::database {

enum class CursorLocation : std::int32_t { Server = 2, Client = 3 };
enum class CursorType : std::int32_t { ForwardOnly = 0, Keyset = 1, Dynamic = 2, Static = 3 };
enum class LockType : std::int32_t { ReadOnly = 1, Pessimistic = 2, Optimistic = 3 };

/// How a recordset is opened.
struct OpenOptions {
  CursorType Cursor = CursorType::ForwardOnly;
  LockType Lock = LockType::ReadOnly;
  /// Fetches on a thread and a link of its own; Open returns at once, rows arrive in blocks on the
  /// user-interface thread, each followed by FetchProgress, the last by FetchComplete.
  bool Async = false;
};

/// The rows of a query, with a current row. Rows that have come can be read while others are still
/// being fetched. Movable, while events run too; belongs to the user-interface thread. Its methods
/// may be called from its own events, which may also destroy or replace it.
class Recordset {
 public:
  /// \param progress rows fetched so far; \param maxProgress rows known to come, or the same.
  using FetchProgressEvent = std::function<void(std::int64_t progress, std::int64_t maxProgress)>;
  /// \param error the failure when status is ErrorsOccurred, else null.
  using FetchCompleteEvent = std::function<void(const Error* error, EventStatus status)>;

  explicit Recordset(Environment environment);
  ~Recordset();  ///< Cancels a running fetch without waiting for the database.
  Recordset(Recordset&&) noexcept;
  Recordset& operator=(Recordset&&) noexcept;

  CursorLocation Location = CursorLocation::Server;
  /// Rows a block of an asynchronous fetch: the "Background Fetch Size". 1 or more.
  std::int64_t BackgroundFetchSize = 1000;
  FetchProgressEvent FetchProgress;
  FetchCompleteEvent FetchComplete;

  /// Opens on a link of its own made from the connection string. \throws Error ObjectOpen when
  /// open, NoCommandText when the text is empty, the driver's otherwise (an asynchronous open
  /// reports the driver's failures through FetchComplete instead, and stays open with the rows that
  /// have come).
  void Open(StringView source, StringView connectionString, OpenOptions options = {});

  /// Opens on the connection; an asynchronous fetch takes a link of its own to the same database.
  void Open(StringView source, Connection& connection, OpenOptions options = {});

  /// Takes it off its connection; the rows stay readable. No update is possible any more.
  void Disconnect();

  /// Stops a running fetch without waiting; the rows that have come stay. FetchComplete comes later
  /// with status Cancelled.
  void Cancel();

  /// Closes and forgets the rows. No event of the fetch that ran arrives any more.
  /// \throws Error ObjectClosed when closed.
  void Close();

  ObjectState State() const;  ///< Fetching while rows are still to come.

  // Reading through the current row. All throw ObjectClosed when closed.
  bool EndOfFile() const;        ///< behind the last row that has come
  bool BeginningOfFile() const;  ///< no row has come
  // A move first writes what is pending in the current row, as Update does.
  void MoveFirst();  ///< \throws Error NoCurrentRecord when no row has come
  void MoveNext();   ///< \throws Error NoCurrentRecord when already behind the last row
  void MoveTo(std::int64_t row);  ///< 0-based. \throws Error NoCurrentRecord outside the rows

  /// Value in the current row of the column of this name, regardless of case.
  /// \throws Error ItemNotFound, NoCurrentRecord
  Variant Field(StringView name) const;

  /// Changes the value in the current row until Update. \throws Error NotUpdatable, ItemNotFound,
  /// NoCurrentRecord, DataConversion when the value does not fit the column's type
  void SetField(StringView name, const Variant& value);

  // Reading without moving, for lists.
  std::int64_t RecordCount() const;  ///< rows that have come
  const std::vector<Column>& Columns()
      const;  ///< empty until the first rows of an asynchronous fetch
  std::optional<std::size_t> ColumnIndex(StringView name) const;
  /// The cell's text; nothing when null. Valid until Close. \pre row and column are in range.
  std::optional<StringView> CellText(std::int64_t row, std::size_t column) const;

  /// Adds an empty row and makes it current. \throws Error NotUpdatable
  void AddNew();

  /// Writes the changed fields of the current row to the table that the query named: an insert
  /// after AddNew, with the id read back in one transaction where the engine has them, else an
  /// update that finds the row by its key and by the values that the fields which were set had when
  /// it was read, set to the same or not. \throws Error RowChanged when one of them has another
  /// value now, RowGone when the row is gone, else the driver's; the pending values stay.
  void Update();
  void CancelUpdate();

  /// What became of a new row whose Update failed: whether nobody knows if it is stored, because
  /// it was sent and could not be undone. Before it is sent again, FindAdded must look for it. An
  /// Update within a transaction is undone by that; what it says counts.
  bool IsInDoubt() const;
  /// The new row that Update was last to add; good for as long as wanted.
  NewRow AddedRow() const;
  /// Looks for a row that holds what the new one was to hold, and makes it current, as Update would
  /// have done. \return false when there is none. \throws Error
  bool FindAdded(const NewRow& row);

  /// Reads the current row and all its values again from the database; after an insert by the id
  /// that the engine assigned. \throws Error RowGone when it is gone.
  void Resync();

  /// Takes the whole result of a statement that was executed; stays closed when it has none.
  /// \pre closed
  void ReadAll(Statement& statement);

 private:
  class Contents;

  void Take(std::unique_ptr<Contents> contents);
  Contents& Opened() const;

  Environment environment_;
  std::unique_ptr<Contents> contents_;  // null when closed
};

}  // namespace ktrv::database
