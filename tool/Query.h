#pragma once

#include <vector>

#include "database/Connection.h"
#include "database/RowBlock.h"

namespace ktrv::tool {

/// A running query, read row by row with little memory, without a time limit.
class Query {
 public:
  /// Executes the text. \param connection must be open and outlive the query. \throws Error
  Query(database::Connection& connection, StringView text);
  ~Query();
  Query(const Query&) = delete;
  Query& operator=(const Query&) = delete;

  /// Moves to the next row, at first to the first one. \return false after the last one.
  /// \throws Error
  bool Next();

  /// A cell of the current row; nullopt for null. Valid until the next call of Next.
  std::optional<StringView> Cell(std::size_t column) const { return cells_[column]; }
  /// The same; "" for null.
  StringView Text(std::size_t column) const { return Cell(column).value_or(StringView()); }

  const std::vector<database::Column>& Columns() const { return statement_->Columns(); }
  /// The column's index. \throws Error ItemNotFound
  std::size_t ColumnOf(StringView name) const;

 private:
  database::Connection& connection_;
  std::shared_ptr<database::SharedLink> link_;
  std::unique_ptr<database::Statement> statement_;
  std::unique_ptr<database::RowBlock> block_;
  std::size_t row_ = 0;
  std::vector<std::optional<StringView>> cells_;  ///< of the current row
};

/// The first cell of the query's first row as a number; 0 without one. \throws Error
std::int64_t CountOf(database::Connection& connection, StringView text);

bool IsMySql(database::Connection& connection);

/// Whether a transaction that is rolled back leaves nothing in the tables. On MySql the storage of
/// each table decides. \param tables as in a list of SQL. \throws Error
bool RollsBackRows(database::Connection& connection, StringView tables);

}  // namespace ktrv::tool
