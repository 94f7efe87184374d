#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "common/Text.h"
#include "common/Variant.h"
#include "database/RowBlock.h"
#include "database/Types.h"

/// The interface to a database library. Everything else that programs know from ADO (client cursor,
/// updates, asynchronous fetch, states) is implemented above it, once for all drivers.
namespace ktrv::database {

/// One statement on a link. Not thread-safe, except Cancel.
class Statement {
 public:
  virtual ~Statement() = default;

  /// Executes the statement with one value per parameter, in order. \throws Error with the driver's
  /// text
  virtual void Execute(std::span<const Variant> values) = 0;

  /// Executes the statement, which returns no rows, once per row of values, in order, with as few
  /// round trips as the driver supports. \return false if it is not supported; then nothing was
  /// executed. \throws Error; then it is unknown which rows were executed
  virtual bool ExecuteAll(std::span<const std::vector<Variant>> /*rows*/) { return false; }

  /// Removes the time limit of Execute and Fetch, if the driver has set one for interactive use.
  virtual void LiftTimeLimit() {}

  /// The columns of the result; empty if there are no rows to return. Valid after Execute.
  virtual const std::vector<Column>& Columns() const = 0;

  /// Rows affected by the last Execute; -1 if the driver cannot tell.
  virtual std::int64_t RowsAffected() const = 0;

  /// Fetches up to `rows` rows, at least 1; null after the last row. Cells are never truncated.
  /// \throws Error; CommandCancelled after Cancel
  virtual std::unique_ptr<RowBlock> Fetch(std::size_t rows) = 0;

  /// Requests a running Execute or Fetch to stop. Callable from any thread during the statement's
  /// lifetime; does not wait.
  virtual void Cancel() noexcept = 0;
};

/// An open session with a database. Not thread-safe.
class Link {
 public:
  virtual ~Link() = default;

  /// Creates a statement. The engine prepares it on its first execution, so an invalid text fails
  /// only then. The link must outlive the statement.
  virtual std::unique_ptr<Statement> Prepare(StringView text,
                                             std::span<const Parameter> parameters) = 0;

  virtual Engine EngineKind() const = 0;

  /// The columns of the table's primary key; empty if it has none or the driver cannot tell.
  virtual std::vector<String> KeyColumns(StringView table) = 0;

  /// Whether LastInsertedId will work for the table. Call it before an insert, so that no row is
  /// stored whose id cannot be read. \throws Error
  virtual bool TellsInsertedId(StringView table, StringView column) = 0;

  /// The id that the engine assigned to this link's last insert into the table.
  virtual std::int64_t LastInsertedId(StringView table, StringView column) = 0;

  /// Starts a transaction. \return false if the engine has none; then each statement is committed
  /// separately. \throws Error
  virtual bool Begin() = 0;

  /// Commits the transaction. \throws Error; then its outcome is unknown and the link must not be
  /// used any more
  virtual void Commit() = 0;

  /// Rolls the transaction back. \throws Error; then the link must not be used any more, and
  /// closing it rolls back
  virtual void RollBack() = 0;

  /// Sets a savepoint for RollBackToMark. \return false if the engine has none. \throws Error
  virtual bool SetMark() { return false; }
  /// \throws Error; then the contents of the transaction are undefined
  virtual void RollBackToMark() {}
};

/// A database library.
class Driver {
 public:
  virtual ~Driver() = default;

  /// Opens a link. Thread-safe. \param user, \param password are added if not empty. \return null
  /// if the library returns neither a session nor an error. \throws Error with the library's
  /// number, text and source
  virtual std::unique_ptr<Link> Open(StringView connectionString, StringView user,
                                     StringView password) = 0;
};

}  // namespace ktrv::database
