#pragma once

#include "database/BackgroundFetch.h"
#include "database/ColumnValues.h"
#include "database/Recordset.h"
#include "database/RowStore.h"
#include "database/TableWriter.h"

namespace ktrv::database {

/// All that an open recordset holds. It stays where it is while the recordset is moved.
class Recordset::Contents final : public BackgroundFetch::Receiver {
 public:
  /// Values by column that the current row has not been written with yet.
  using PendingValues = ColumnValues;

  explicit Contents(bool updatable) : Updatable(updatable) {}

  /// Goes behind the rows that have come, a closure of the user-interface thread each.
  void StartFetch(const Environment& environment, DatabaseAddress address, std::size_t blockRows);
  void ReadAll(Statement& statement);

  std::size_t ColumnOf(StringView name) const;  ///< \throws Error ItemNotFound
  bool OnRow() const { return Adding || Position < Rows.Count(); }
  Variant Value(std::size_t column) const;

  /// The link to update through. \throws Error NotUpdatable when there is none any more
  std::shared_ptr<SharedLink> UpdateLink() const;
  void Write();
  bool FindAdded(const NewRow& row);
  void ReadAgain();

  void ColumnsCame(std::vector<Column> columns) override;
  void RowsCame(std::unique_ptr<RowBlock> rows) override;
  void RowsTaken() override;
  void FetchEnded(const Error* error, EventStatus status) override;

  Recordset* Owner = nullptr;  ///< whose events are called; follows the moves
  String Source;
  std::vector<Column> Columns;
  RowStore Rows;
  std::int64_t Position = 0;
  std::unique_ptr<BackgroundFetch> Fetch;  ///< null unless rows are still to come

  bool Updatable;
  bool Adding = false;
  PendingValues Pending;
  NewRow Added;                              ///< what Write was last to add
  bool InDoubt = false;                      ///< whether it is stored
  std::shared_ptr<SharedLink> OwnLink;       ///< of a recordset that was opened on a string
  std::weak_ptr<SharedLink> ConnectionLink;  ///< of the connection, or the own one

 private:
  TableWriter::Cells CellsOfRow() const;
  /// \return the new row
  TableWriter::Cells Insert(const std::shared_ptr<SharedLink>& link, TableWriter& table);
  void Append(const TableWriter::Cells& cells);
};

}  // namespace ktrv::database
