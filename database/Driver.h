#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "common/Text.h"
#include "common/Variant.h"
#include "database/RowBlock.h"
#include "database/Types.h"

/// What a database library must do for the component, and no more. All else that programs know from
/// ADO (client cursor, updates, asynchronous fetch, state rules) is written once above it.
namespace ktrv::database {

/// One prepared text on a link. Used on one thread at a time, except Cancel.
class Statement {
 public:
  virtual ~Statement() = default;

  /// Runs the text with one value for each parameter, in order. \throws Error with the driver's
  /// text.
  virtual void Execute(std::span<const Variant> values) = 0;

  /// Runs the text, which returns no rows, once for each of the rows of values, in order and in as
  /// few turns of the line as the driver can. \return false when it has no such way; nothing ran
  /// then. \throws Error after which nobody knows which of them ran.
  virtual bool ExecuteAll(std::span<const std::vector<Variant>> /*rows*/) { return false; }

  /// Execute and Fetch give up after a time that suits who waits for them at the screen; behind
  /// this, they take what they need.
  virtual void LiftTimeLimit() {}

  /// The columns of the result; empty when the text returns no rows. Valid after Execute.
  virtual const std::vector<Column>& Columns() const = 0;

  /// Rows changed by the last Execute; -1 when the driver cannot tell.
  virtual std::int64_t RowsAffected() const = 0;

  /// The next rows of the result, at most `rows` (1 or more) of them; no block behind the last row.
  /// A cell is never shortened. \throws Error, CommandCancelled after Cancel.
  virtual std::unique_ptr<RowBlock> Fetch(std::size_t rows) = 0;

  /// Asks a running Execute or Fetch to give up soon. May be called from any thread while the
  /// statement lives; does not wait.
  virtual void Cancel() noexcept = 0;
};

/// One open session with a database. Used on one thread at a time.
class Link {
 public:
  virtual ~Link() = default;

  /// A statement for the text. The text is given to the engine when it is first executed, so a text
  /// that the engine refuses fails only then. The link must outlive the statement.
  virtual std::unique_ptr<Statement> Prepare(StringView text,
                                             std::span<const Parameter> parameters) = 0;

  virtual Engine EngineKind() const = 0;

  /// Names of the columns that make up the table's primary key; empty when it has none or the
  /// driver cannot tell.
  virtual std::vector<String> KeyColumns(StringView table) = 0;

  /// Whether LastInsertedId will tell the id of a new row of the table. Asked before the row is
  /// inserted, so that none is stored whose id cannot be known. \throws Error
  virtual bool TellsInsertedId(StringView table, StringView column) = 0;

  /// The id that the engine assigned to the row that this link inserted last into the table.
  virtual std::int64_t LastInsertedId(StringView table, StringView column) = 0;

  /// Makes one of the statements that follow: they are stored together by Commit, or not at all.
  /// \return false when the engine has no transactions; each statement stands alone then.
  /// \throws Error
  virtual bool Begin() = 0;

  /// Stores what ran since Begin. \throws Error after which nobody knows whether it is stored, and
  /// the link must not be used any more.
  virtual void Commit() = 0;

  /// Undoes what ran since Begin. \throws Error after which the link must not be used any more; its
  /// end undoes it then.
  virtual void RollBack() = 0;

  /// Marks the place in the transaction to which RollBackToMark goes back. \return false when the
  /// engine has no marks. \throws Error
  virtual bool SetMark() { return false; }
  /// \throws Error after which nobody knows what the transaction holds
  virtual void RollBackToMark() {}
};

/// A database library.
class Driver {
 public:
  virtual ~Driver() = default;

  /// Opens a link. May be called on any thread. \param user, \param password are added when not
  /// empty. \return null when the library gives no session and no reason. \throws Error with the
  /// library's number, text and source.
  virtual std::unique_ptr<Link> Open(StringView connectionString, StringView user,
                                     StringView password) = 0;
};

}  // namespace ktrv::database
