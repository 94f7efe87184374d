#pragma once

#include <vector>

#include "database/Connection.h"
#include "database/Recordset.h"

namespace ktrv::database {

/// A prepared statement with input parameters. It is prepared on its first execution, and again
/// after its connection was reopened or its link replaced.
class Command {
 public:
  /// The connection to run on; must outlive its use. Null: none.
  void SetActiveConnection(Connection* connection);
  Connection* ActiveConnection() const { return connection_; }

  void SetCommandText(String text);
  const String& CommandText() const { return text_; }

  /// Has no effect: all commands are prepared. Kept because ADO programmers expect it.
  bool Prepared = false;

  /// Appends an input parameter. \param size maximum characters of a text; 0 for other types
  void Append(String name, DataType type, std::int64_t size = 0);
  const std::vector<Parameter>& Parameters() const { return parameters_; }

  /// Executes the statement with one value per parameter. Returns a forward-only, read-only
  /// recordset with the rows, or a closed one if the statement returns none.
  /// \throws Error InvalidConnection without an open connection; InvalidArgument for a wrong number
  /// of values; DataConversion if a value does not fit its parameter; else the driver's
  Recordset Execute(std::vector<Variant> values = {});

  enum class Together { Ran, CannotRun, Undone };
  /// Executes the statement, which returns no rows, for many rows of values at once. Requires an
  /// open transaction. \return CannotRun without a transaction or without support by driver or
  /// engine; Undone if a row failed. In both cases transactional tables are unchanged, and the
  /// rows can be run one by one. \throws Error as Execute; the contents of the transaction are
  /// undefined then
  Together ExecuteTogether(std::vector<std::vector<Variant>> rows);

  /// Rows affected by the last Execute; -1 if the driver cannot tell.
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
