#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "common/Error.h"
#include "common/RowSource.h"
#include "database/Connection.h"
#include "database/NewRow.h"
#include "database/RowBlock.h"

namespace ktrv::database {

enum class CursorLocation : std::int32_t { Server = 2, Client = 3 };
enum class CursorType : std::int32_t { ForwardOnly = 0, Keyset = 1, Dynamic = 2, Static = 3 };
enum class LockType : std::int32_t { ReadOnly = 1, Pessimistic = 2, Optimistic = 3 };

/// Options of Recordset::Open.
struct OpenOptions {
  CursorType Cursor = CursorType::ForwardOnly;
  LockType Lock = LockType::ReadOnly;
  /// Fetches on a separate thread and link. Open returns at once. Blocks of rows arrive on the
  /// user-interface thread, each followed by FetchProgress; after the last one, FetchComplete.
  bool Async = false;
};

/// The rows of a query, with a current row. Rows can be read while others are still being fetched.
/// Movable, also during a fetch. Use it on the user-interface thread only. Its methods may be
/// called from its own events, which may also destroy or replace it.
class Recordset final : public RowSource {
 public:
  /// \param progress rows fetched so far. \param maxProgress total rows if known, else the same
  using FetchProgressEvent = std::function<void(std::int64_t progress, std::int64_t maxProgress)>;
  /// \param error the failure if status is ErrorsOccurred, else null
  using FetchCompleteEvent = std::function<void(const Error* error, EventStatus status)>;

  explicit Recordset(Environment environment);
  ~Recordset() override;  ///< Cancels a running fetch without waiting for the database.
  Recordset(Recordset&&) noexcept;
  Recordset& operator=(Recordset&&) noexcept;

  CursorLocation Location = CursorLocation::Server;
  /// Rows per block of an asynchronous fetch ("Background Fetch Size"); at least 1.
  std::int64_t BackgroundFetchSize = 1000;
  FetchProgressEvent FetchProgress;
  FetchCompleteEvent FetchComplete;

  /// Opens on a link of its own. \throws Error ObjectOpen if open; NoCommandText for an empty text;
  /// else the driver's. After an asynchronous open, failures of the driver are reported through
  /// FetchComplete instead, and the recordset stays open with the rows fetched so far.
  void Open(StringView source, StringView connectionString, OpenOptions options = {});

  /// Opens on the connection. An asynchronous fetch uses a link of its own to the same database.
  void Open(StringView source, Connection& connection, OpenOptions options = {});

  /// Detaches from the connection. The rows stay readable; updates are no longer possible.
  void Disconnect();

  /// Cancels a running fetch without waiting. Fetched rows stay. FetchComplete follows with status
  /// Cancelled.
  void Cancel();

  /// Closes and releases the rows. No more events of its fetch follow. \throws Error ObjectClosed
  /// if closed
  void Close();

  ObjectState State() const;  ///< Fetching while the fetch is running.

  // Reading the current row. All throw ObjectClosed if closed.
  bool EndOfFile() const;        ///< after the last row fetched so far
  bool BeginningOfFile() const;  ///< no row fetched yet
  // A move first calls Update for pending changes of the current row.
  void MoveFirst();               ///< \throws Error NoCurrentRecord if there is no row
  void MoveNext();                ///< \throws Error NoCurrentRecord if already after the last row
  void MoveTo(std::int64_t row);  ///< 0-based. \throws Error NoCurrentRecord out of range

  /// The value of a column in the current row. Column names are case-insensitive. \throws Error
  /// ItemNotFound, NoCurrentRecord
  Variant Field(StringView name) const;

  /// Sets a pending value in the current row, until Update. \throws Error NotUpdatable,
  /// ItemNotFound, NoCurrentRecord; DataConversion if the value does not fit the column's type
  void SetField(StringView name, const Variant& value);

  // Random access, for lists.
  std::int64_t RecordCount() const override;  ///< rows fetched so far
  const std::vector<Column>& Columns()
      const;  ///< empty until the first rows of an asynchronous fetch
  std::optional<std::size_t> ColumnIndex(StringView name) const;
  /// The text of a cell; nullopt for null. Valid until Close. \pre row and column are in range
  std::optional<StringView> CellText(std::int64_t row, std::size_t column) const override;
  std::size_t ColumnCount() const override { return Columns().size(); }

  /// Adds an empty row and makes it current. \throws Error NotUpdatable
  void AddNew();

  /// Writes the pending values to the table of the query. After AddNew: an insert, with the id read
  /// back, in one transaction if the engine supports it. Otherwise an update with optimistic
  /// locking: it finds the row by its key and by the old values of all fields that were set, also
  /// of those set to the same value. \throws Error RowChanged if an old value has changed; RowGone
  /// if the row no longer exists; else the driver's. The pending values stay then.
  void Update();
  void CancelUpdate();

  /// Whether it is unknown if the new row of a failed Update is stored, because it was sent and
  /// could not be rolled back. Before a second attempt, look for it with FindAdded. Inside an outer
  /// transaction, that transaction's outcome decides.
  bool IsInDoubt() const;
  /// The row of the last insert by Update; a copy.
  NewRow AddedRow() const;
  /// Searches for a row with the values and, if known, the key of the new one. If found, makes it
  /// current, as Update would have done. \return false if there is none. \throws Error
  bool FindAdded(const NewRow& row);

  /// Reads the current row again; after an insert, by the id that the engine assigned. \throws
  /// Error RowGone if it no longer exists
  void Resync();

  /// Reads the whole result of an executed statement. Stays closed if it has none. \pre closed
  void ReadAll(Statement& statement);

 private:
  class Contents;

  void Take(std::unique_ptr<Contents> contents);
  Contents& Opened() const;

  Environment environment_;
  std::unique_ptr<Contents> contents_;  // null: closed
};

}  // namespace ktrv::database
