#include "database/Command.h"

#include <utility>

#include "database/Conversion.h"
#include "database/DataError.h"
#include "database/Engines.h"

namespace ktrv::database {
namespace {

/// Whether the statement was cancelled at its time limit; then it cannot be executed again.
bool WasCancelled(const Error& error) {
  return error.Number() == ErrorNumber::TimedOut;
}

}  // namespace

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
  Convert(values);
  const auto& link = connection_->LiveLink();
  Statement& statement = Prepare(link);
  Recordset result(connection_->Surroundings());
  try {
    statement.Execute(values);
    recordsAffected_ = ChangedRows(statement, link->Get().EngineKind());
    result.ReadAll(statement);
  } catch (const Error& error) {
    if (WasCancelled(error)) statement_ = {};
    throw;
  }
  connection_->StatementWorked();
  return result;
}

Command::Together Command::ExecuteTogether(std::vector<std::vector<Variant>> rows) {
  if (!connection_ || !connection_->CurrentLink()) {
    throw DataError(ErrorNumber::InvalidConnection);
  }
  const auto& link = connection_->LiveLink();
  if (!link->InTransaction) return Together::CannotRun;
  try {
    for (auto& values : rows) Convert(values);
  } catch (const Error&) {
    return Together::CannotRun;  // the caller can run the valid rows one by one
  }
  Statement& statement = Prepare(link);
  if (!link->Get().SetMark()) return Together::CannotRun;
  try {
    if (!statement.ExecuteAll(rows)) return Together::CannotRun;
  } catch (const Error& error) {
    if (WasCancelled(error)) statement_ = {};
    try {
      link->Get().RollBackToMark();
    } catch (const Error&) {
      throw error;  // report the first failure
    }
    return Together::Undone;
  }
  connection_->StatementWorked();
  return Together::Ran;
}

void Command::Convert(std::vector<Variant>& values) const {
  if (values.size() != parameters_.size()) throw DataError(ErrorNumber::InvalidArgument);
  for (std::size_t index = 0; index < values.size(); ++index) {
    const Parameter& parameter = parameters_[index];
    constexpr bool kNarrow = true;  // integer parameters have 4 bytes
    values[index] = ConvertTo(parameter.Type, values[index], parameter.Size, kNarrow);
  }
}

Statement& Command::Prepare(const std::shared_ptr<SharedLink>& link) {
  if (!statement_.IsOn(link)) statement_ = link->Prepare(text_, parameters_);
  return *statement_.Get();
}

}  // namespace ktrv::database
