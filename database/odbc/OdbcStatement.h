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

/// A text on an ODBC session. Rows are fetched one by one into bound buffers: a rowset of more is
/// not faster with these drivers, and only so a value that does not fit can be read again in full.
class OdbcStatement final : public Statement {
 public:
  OdbcStatement(const OdbcLink& link, String text, std::span<const Parameter> parameters);

  void Execute(std::span<const Variant> values) override;

  bool ExecuteAll(std::span<const std::vector<Variant>> rows) override;

  void LiftTimeLimit() override;

  /// Execute up to the first result. What follows waits in ToNextResult.
  void ExecuteToFirstResult(std::span<const Variant> values);
  /// \return whether there is one more. \throws Error when a statement behind the first failed
  bool ToNextResult();

  const std::vector<Column>& Columns() const override { return columns_; }
  std::int64_t RowsAffected() const override { return rowsAffected_; }
  std::unique_ptr<RowBlock> Fetch(std::size_t rows) override;
  void Cancel() noexcept override;

 private:
  SQLRETURN Check(SQLRETURN result) const;
  void PassUnlessCancelled() const;
  void Run();
  /// Calls the one of both that takes the text as the driver does.
  template <class Narrowly, class Widely>
  void Give(Narrowly narrowly, Widely widely);
  void BindValues(std::span<const Variant> values);
  void DescribeColumns();
  void BindColumns();
  void CloseCursor() noexcept;
  void LimitTime(std::chrono::seconds longest) const;
  void SetSetting(SQLINTEGER setting, SQLPOINTER value) const;

  const OdbcLink& link_;
  const String text_;
  const std::vector<Parameter> parameters_;
  StatementHandle handle_;
  std::optional<StatementHandle> interrupter_;  // where handle_ may not be cancelled
  bool ran_ = false;                            // without being prepared
  bool prepared_ = false;
  bool fetching_ = false;
  std::atomic<bool> cancelled_ = false;
  std::vector<Column> columns_;
  std::vector<SQLSMALLINT> types_;     // of the columns
  std::vector<ColumnBuffer> buffers_;  // of the columns
  std::vector<ParameterBuffer> arguments_;
  std::vector<ParameterColumn> argumentsOfAll_;
  std::int64_t rowsAffected_ = -1;
};

}  // namespace ktrv::database::odbc
