#pragma once

#include <atomic>
#include <deque>
#include <optional>
#include <vector>

#include "database/odbc/ColumnBuffer.h"
#include "database/odbc/OdbcLink.h"
#include "database/odbc/ParameterBuffer.h"
#include "database/odbc/ParameterColumn.h"

namespace ktrv::database::odbc {

/// A statement on an ODBC session. Rows are fetched one at a time into bound buffers: larger
/// rowsets are not faster with these drivers, and would prevent reading a long value again.
class OdbcStatement final : public Statement {
 public:
  OdbcStatement(const OdbcLink& link, String text, std::span<const Parameter> parameters);

  void Execute(std::span<const Variant> values) override;

  bool ExecuteAll(std::span<const std::vector<Variant>> rows) override;

  void LiftTimeLimit() override;

  /// Execute up to the first result; ToNextResult reads the others.
  void ExecuteToFirstResult(std::span<const Variant> values);
  /// \return whether there is another result. \throws Error if a later statement failed
  bool ToNextResult();

  const std::vector<Column>& Columns() const override { return columns_; }
  std::int64_t RowsAffected() const override { return rowsAffected_; }
  std::unique_ptr<RowBlock> Fetch(std::size_t rows) override;
  void Cancel() noexcept override;

 private:
  SQLRETURN Check(SQLRETURN result) const;
  void PassUnlessCancelled() const;
  void Run();
  /// Calls the function that matches the driver's text encoding.
  template <class Narrowly, class Widely>
  void Give(Narrowly narrowly, Widely widely);
  /// \param first index of the parameter of the first value
  void BindValues(std::span<const Variant> values, std::size_t first = 0);
  void ExecuteBound();
  /// Sets rowsAffected_ if the current result has a count.
  void TakeRowCount();
  bool ExecuteManyRows(std::span<const std::vector<Variant>> rows);
  void DescribeColumns();
  void BindColumns();
  void CloseCursor() noexcept;
  void LimitTime(std::chrono::seconds longest) const;
  void SetSetting(SQLINTEGER setting, SQLPOINTER value) const;

  const OdbcLink& link_;
  const String text_;
  const std::vector<Parameter> parameters_;
  StatementHandle handle_;
  std::optional<StatementHandle> interrupter_;  // if handle_ must not be cancelled
  bool ran_ = false;                            // at least once, prepared or not
  bool prepared_ = false;
  bool fetching_ = false;
  std::atomic<bool> cancelled_ = false;
  std::vector<Column> columns_;
  std::vector<SQLSMALLINT> types_;     // ODBC types of the columns
  std::vector<ColumnBuffer> buffers_;  // of the columns
  std::vector<ParameterBuffer> arguments_;
  std::vector<ParameterColumn> argumentsOfAll_;
  std::unique_ptr<OdbcStatement> manyRows_;  // inserts many rows as this one does a single one
  std::int64_t rowsAffected_ = -1;
};

}  // namespace ktrv::database::odbc
