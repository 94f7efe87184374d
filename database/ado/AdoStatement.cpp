#include "database/ado/AdoStatement.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "database/DataError.h"
#include "database/Engines.h"
#include "database/TimeLimits.h"
#include "database/ado/Columns.h"
#include "database/ado/Constants.h"
#include "database/ado/SafeArray.h"

namespace ktrv::database::ado {

AdoStatement::AdoStatement(const AdoLink& link, String text, std::span<const Parameter> parameters)
    : link_(link), text_(std::move(text)), parameters_(parameters.begin(), parameters.end()) {
  if (IsQuestion(text_)) longest_ = std::chrono::ceil<std::chrono::seconds>(TimeLimits().Answer);
}

AdoStatement::~AdoStatement() {
  CloseRows();
}

void AdoStatement::PassUnlessCancelled() const {
  if (cancelled_) {
    throw Error(ErrorNumber::CommandCancelled,
                DataError(ErrorNumber::OperationCancelled).Description(), u"ADODB");
  }
}

void AdoStatement::Execute(std::span<const Variant> values) {
  CloseRows();
  PassUnlessCancelled();
  if (values.size() != parameters_.size()) throw DataError(ErrorNumber::InvalidArgument);
  if (!command_ || !CommandTakes(values)) MakeCommand(values);
  PassValues(values);
  Run();
}

void AdoStatement::LiftTimeLimit() {
  longest_ = std::chrono::seconds(0);
  command_.Release();
}

bool AdoStatement::CommandTakes(std::span<const Variant> values) const {
  for (std::size_t index = 0; index < values.size(); ++index) {
    const bool takes = IsNull(values[index]) ||
                       forms_[index].Takes(ParameterForm::Of(parameters_[index], values[index]));
    if (!takes) return false;
  }
  return true;
}

/// Creates a new command for each combination of parameter forms, because types of appended
/// parameters cannot be changed reliably.
void AdoStatement::MakeCommand(std::span<const Variant> values) {
  command_.Release();
  arguments_.clear();
  forms_.clear();
  Object command = Object::Create(L"ADODB.Command");
  command.PutReference(L"ActiveConnection", link_.Connection());
  command.Put(L"CommandText", Value(StringView(text_)));
  command.Put(L"CommandType", Value(kCommandText));
  if (longest_) {
    command.Put(L"CommandTimeout", Value(static_cast<std::int32_t>(longest_->count())));
  }
  // A statement without parameters usually runs once, and some engines cannot prepare DDL.
  command.Put(L"Prepared", Value(!parameters_.empty()));
  const Object collection = command.Part(L"Parameters");
  for (std::size_t index = 0; index < values.size(); ++index) {
    const ParameterForm form = ParameterForm::Of(parameters_[index], values[index]);
    const Value name{StringView(parameters_[index].Name)};
    const Value type(form.Type);
    const Value direction(kInput);
    const Value size(static_cast<std::int32_t>(
        std::min<std::int64_t>(form.Size, std::numeric_limits<std::int32_t>::max())));
    Object made(command.Call(L"CreateParameter", {&name, &type, &direction, &size}));
    const Value reference = made.Reference();
    collection.Call(L"Append", {&reference});
    arguments_.push_back(std::move(made));
    forms_.push_back(form);
  }
  command_ = std::move(command);
}

void AdoStatement::PassValues(std::span<const Variant> values) {
  for (std::size_t index = 0; index < values.size(); ++index) {
    arguments_[index].Put(L"Value", Value(values[index]));
  }
}

void AdoStatement::Run() {
  const bool inBackground = link_.Surroundings().IsOwn();
  if (inBackground) link_.ForgetFailures();
  columns_.clear();
  rowsAffected_ = -1;
  Value affected;
  const Value affectedReference = Value::Reference(affected);
  const Value noValues = Value::Missing();
  const Value options(kCommandText | (inBackground ? kAsyncExecute : 0));
  rows_ = Object(command_.Call(L"Execute", {&affectedReference, &noValues, &options}));
  const std::int64_t state = rows_ ? WaitForState() : std::int64_t{AdoState::Closed};
  if (cancelled_) CloseRows();
  PassUnlessCancelled();
  if (state & AdoState::Open) {
    columns_ = ColumnsOf(rows_);
    return;
  }
  if (inBackground) link_.PassUnlessFailed();
  if (!inBackground) rowsAffected_ = affected.Whole().value_or(-1);
  PassFurtherResults();
  if (inBackground) link_.PassUnlessFailed();
}

/// Reads all further results and keeps the last row count: SQL Server returns those of a trigger's
/// statements before the statement's own. A failure after the first one is reported only here.
void AdoStatement::PassFurtherResults() {
  while (rows_) {
    PassUnlessCancelled();
    Object next;
    Value affected;
    const Value affectedReference = Value::Reference(affected);
    try {
      next = Object(rows_.Call(L"NextRecordset", {&affectedReference}));
    } catch (const Error& error) {
      rows_.Release();
      if (!IsUnsupported(error)) throw;
      return;
    }
    CloseRows();
    rows_ = std::move(next);
    if (!rows_) return;
    WaitForState();
    if (const std::int64_t count = affected.Whole().value_or(-1); count >= 0) rowsAffected_ = count;
  }
}

/// Waits until the rows are not executing any more. \return their state
std::int64_t AdoStatement::WaitForState() const {
  bool told = false;
  for (;;) {
    const std::int64_t state = rows_.GetWhole(L"State");
    if ((state & AdoState::Executing) == 0) return state;
    if (cancelled_ && !std::exchange(told, true)) {
      try {
        rows_.Call(L"Cancel");
      } catch (const Error&) {
        // Execution has just ended.
      }
    }
    link_.Surroundings().Wait();
  }
}

std::unique_ptr<RowBlock> AdoStatement::Fetch(std::size_t rows) {
  if (!rows_) return nullptr;
  PassUnlessCancelled();
  if (rows_.Get(L"EOF").Truth()) {
    CloseRows();
    return nullptr;
  }
  constexpr std::size_t kMost = 100'000;  // limits the memory of the array that GetRows returns
  const Value count(static_cast<std::int32_t>(std::min(rows, kMost)));
  return RowsOf(rows_.Call(L"GetRows", {&count}), columns_.size());
}

void AdoStatement::CloseRows() noexcept {
  if (!rows_) return;
  try {
    // Close now, not when the object is released: on some engines an open cursor holds locks.
    if (rows_.GetWhole(L"State") & AdoState::Open) rows_.Call(L"Close");
  } catch (...) {
    // The session and its rows are gone already.
  }
  rows_.Release();
}

}  // namespace ktrv::database::ado
