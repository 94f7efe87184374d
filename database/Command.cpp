#include "database/Command.h"

#include <utility>

#include "database/Conversion.h"
#include "database/DataError.h"

namespace ktrv::database {

void Command::SetActiveConnection(Connection* connection) {
  connection_ = connection;
  statement_ = {};
}

void Command::SetCommandText(String text) {
  text_ = std::move(text);
  statement_ = {};
}

void Command::Append(String name, DataType type, std::int64_t size) {
  parameters_.push_back({std::move(name), type, size});
  statement_ = {};
}

Recordset Command::Execute(std::vector<Variant> values) {
  if (!connection_ || !connection_->CurrentLink()) {
    throw DataError(ErrorNumber::InvalidConnection);
  }
  if (Trim(text_).empty()) throw DataError(ErrorNumber::NoCommandText);
  if (values.size() != parameters_.size()) throw DataError(ErrorNumber::InvalidArgument);
  for (std::size_t index = 0; index < values.size(); ++index) {
    const Parameter& parameter = parameters_[index];
    constexpr bool kNarrow = true;  // whole numbers are 4 bytes
    values[index] = ConvertTo(parameter.Type, values[index], parameter.Size, kNarrow);
  }
  const auto& link = connection_->LiveLink();
  if (!statement_.IsOn(link)) statement_ = link->Prepare(text_, parameters_);
  Statement& statement = *statement_.Get();
  statement.Execute(values);
  recordsAffected_ = statement.RowsAffected();
  Recordset result(connection_->Surroundings());
  result.ReadAll(statement);
  connection_->StatementWorked();
  return result;
}

}  // namespace ktrv::database
