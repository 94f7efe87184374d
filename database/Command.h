#pragma once

#include <vector>

#include "database/Connection.h"
#include "database/Recordset.h"

namespace ktrv::database {

/// A prepared text with input parameters. It is prepared when first executed, and again when its
/// connection was closed and opened in between, or lost.
class Command {
 public:
  /// The connection that it runs on; must outlive the command's use. Null takes it off.
  void SetActiveConnection(Connection* connection);
  Connection* ActiveConnection() const { return connection_; }

  void SetCommandText(String text);
  const String& CommandText() const { return text_; }

  /// Kept for what the name says to readers of the dialogs: every command is prepared.
  bool Prepared = false;

  /// Adds an input parameter behind the others. \param size characters of a text, 0 for other
  /// types.
  void Append(String name, DataType type, std::int64_t size = 0);
  const std::vector<Parameter>& Parameters() const { return parameters_; }

  /// Runs the text with one value for each parameter and returns the rows, forward only and
  /// read-only, or a closed recordset when the text returns none.
  /// \throws Error InvalidConnection without an open connection, InvalidArgument when the number of
  /// values differs, DataConversion when a value does not fit its parameter's type or size, else
  /// the driver's.
  Recordset Execute(std::vector<Variant> values = {});

  enum class Together { Ran, CannotRun, Undone };
  /// Runs the text, which returns no rows, for all of these rows of values at once, as a part of
  /// the transaction that runs. \return CannotRun without a transaction, or where the driver or the
  /// engine has no way to; Undone when one of them failed. Nothing of them is stored then, and they
  /// can be run one by one. \throws Error as Execute, after which nobody knows what the transaction
  /// holds
  Together ExecuteTogether(std::vector<std::vector<Variant>> rows);

  /// Rows changed by the last Execute; -1 when the driver cannot tell.
  std::int64_t RecordsAffected() const { return recordsAffected_; }

 private:
  void Convert(std::vector<Variant>& values) const;
  Statement& Prepare(const std::shared_ptr<SharedLink>& link);

  Connection* connection_ = nullptr;
  String text_;
  std::vector<Parameter> parameters_;
  PreparedStatement statement_;
  std::int64_t recordsAffected_ = -1;
};

}  // namespace ktrv::database
