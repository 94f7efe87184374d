#pragma once

#include "database/BackgroundFetch.h"
#include "database/ColumnValues.h"
#include "database/Recordset.h"
#include "database/RowStore.h"
#include "database/TableWriter.h"

namespace ktrv::database {

/// The state of an open recordset. Its address does not change when the recordset is moved.
class Recordset::Contents final : public BackgroundFetch::Receiver {
 public:
  /// New values by column that are not written yet.
  using PendingValues = ColumnValues;

  explicit Contents(bool updatable) : Updatable(updatable) {}

  /// Starts the background fetch; each block is appended by one closure on the user-interface
  /// thread.
  void StartFetch(const Environment& environment, DatabaseAddress address, std::size_t blockRows);
  void ReadAll(Statement& statement);

  std::size_t ColumnOf(StringView name) const;  ///< \throws Error ItemNotFound
  bool OnRow() const { return Adding || Position < Rows.Count(); }
  Variant Value(std::size_t column) const;

  /// The link for updates. \throws Error NotUpdatable if there is none
  std::shared_ptr<SharedLink> UpdateLink() const;
  void Write();
  bool FindAdded(const NewRow& row);
  void ReadAgain();

  void ColumnsCame(std::vector<Column> columns) override;
  void RowsCame(std::unique_ptr<RowBlock> rows) override;
  void RowsTaken() override;
  void FetchEnded(const Error* error, EventStatus status) override;

  Recordset* Owner = nullptr;  ///< its events are called; updated by moves
  String Source;
  std::vector<Column> Columns;
  RowStore Rows;
  std::int64_t Position = 0;
  std::unique_ptr<BackgroundFetch> Fetch;  ///< null unless a fetch is running

  bool Updatable;
  bool Adding = false;
  PendingValues Pending;
  NewRow Added;                              ///< the row of the last insert
  bool InDoubt = false;                      ///< whether the outcome of the insert is unknown
  std::shared_ptr<SharedLink> OwnLink;       ///< if opened by a connection string
  std::weak_ptr<SharedLink> ConnectionLink;  ///< the link of the connection, or OwnLink

 private:
  TableWriter::Cells CellsOfRow() const;
  /// \return the cells of the new row
  TableWriter::Cells Insert(const std::shared_ptr<SharedLink>& link, TableWriter& table);
  void Append(const TableWriter::Cells& cells);
};

}  // namespace ktrv::database
