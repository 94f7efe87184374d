#pragma once

#include <atomic>
#include <chrono>
#include <optional>
#include <vector>

#include "database/ado/AdoLink.h"
#include "database/ado/ParameterForm.h"

namespace ktrv::database::ado {

/// A statement on an ADO session, with the forward-only rows of its last execution.
class AdoStatement final : public Statement {
 public:
  AdoStatement(const AdoLink& link, String text, std::span<const Parameter> parameters);
  ~AdoStatement() override;

  void Execute(std::span<const Variant> values) override;
  void LiftTimeLimit() override;
  const std::vector<Column>& Columns() const override { return columns_; }
  std::int64_t RowsAffected() const override { return rowsAffected_; }
  std::unique_ptr<RowBlock> Fetch(std::size_t rows) override;
  void Cancel() noexcept override { cancelled_ = true; }

 private:
  void PassUnlessCancelled() const;
  void MakeCommand(std::span<const Variant> values);
  bool CommandTakes(std::span<const Variant> values) const;
  void PassValues(std::span<const Variant> values);
  void Run();
  std::int64_t WaitForState() const;
  void PassFurtherResults();
  void CloseRows() noexcept;

  const AdoLink& link_;
  const String text_;
  const std::vector<Parameter> parameters_;
  std::optional<std::chrono::seconds> longest_;  // default of ADO if empty
  Object command_;                               // null before the first execution
  std::vector<Object> arguments_;                // the parameters of command_
  std::vector<ParameterForm> forms_;             // of the parameters
  Object rows_;                                  // null if there are no more
  std::atomic<bool> cancelled_ = false;
  std::vector<Column> columns_;
  std::int64_t rowsAffected_ = -1;
};

}  // namespace ktrv::database::ado
