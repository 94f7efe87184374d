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

  /// Rows changed by the last Execute; -1 when the driver cannot tell.
  std::int64_t RecordsAffected() const { return recordsAffected_; }

 private:
  Connection* connection_ = nullptr;
  String text_;
  std::vector<Parameter> parameters_;
  PreparedStatement statement_;
  std::int64_t recordsAffected_ = -1;
};

}  // namespace ktrv::database
