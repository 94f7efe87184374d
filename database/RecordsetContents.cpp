#include "database/RecordsetContents.h"

#include <utility>

#include "database/Conversion.h"
#include "database/DataError.h"
#include "database/Transaction.h"

namespace ktrv::database {
namespace {

constexpr std::size_t kRowsOfBlock = 1000;  // for synchronous reading

std::unique_ptr<RowBlock> BlockOfRow(const std::vector<std::optional<String>>& cells) {
  auto block = std::make_unique<RowBlock>(cells.size(), 1);
  block->BeginRow();
  for (const auto& cell : cells) cell ? block->Add(*cell) : block->AddNull();
  block->Finish();
  return block;
}

}  // namespace

void Recordset::Contents::StartFetch(const Environment& environment, DatabaseAddress address,
                                     std::size_t blockRows) {
  Fetch =
      std::make_unique<BackgroundFetch>(environment, std::move(address), Source, blockRows, *this);
}

void Recordset::Contents::ReadAll(Statement& statement) {
  Columns = statement.Columns();
  while (auto block = statement.Fetch(kRowsOfBlock)) Rows.Append(std::move(block));
}

std::size_t Recordset::Contents::ColumnOf(StringView name) const {
  for (std::size_t index = 0; index < Columns.size(); ++index) {
    if (EqualsIgnoringCase(Columns[index].Name, name)) return index;
  }
  throw DataError(ErrorNumber::ItemNotFound);
}

Variant Recordset::Contents::Value(std::size_t column) const {
  if (const auto pending = Pending.find(column); pending != Pending.end()) return pending->second;
  if (Adding) return Null{};
  return CellValue(Columns[column].Type, Rows.Cell(Position, column));
}

std::shared_ptr<SharedLink> Recordset::Contents::UpdateLink() const {
  auto link = ConnectionLink.lock();
  if (!Updatable || !link) throw DataError(ErrorNumber::NotUpdatable);
  return link;
}

TableWriter::Cells Recordset::Contents::CellsOfRow() const {
  TableWriter::Cells cells(Columns.size());
  for (std::size_t column = 0; column < cells.size(); ++column) {
    if (const auto text = Rows.Cell(Position, column)) cells[column] = String(*text);
  }
  return cells;
}

void Recordset::Contents::Write() {
  if (!Adding && Pending.empty()) return;
  const auto link = UpdateLink();
  TableWriter table(link->Get(), Source, Columns);
  if (Adding) {
    Append(Insert(link, table));
    return;
  }
  TableWriter::Cells cells = CellsOfRow();
  table.Update(cells, Pending);
  Rows.Replace(Position, BlockOfRow(cells));
  Pending.clear();
}

TableWriter::Cells Recordset::Contents::Insert(const std::shared_ptr<SharedLink>& link,
                                               TableWriter& table) {
  InDoubt = false;
  Added = {};
  for (const auto& [column, value] : Pending) Added.Values[Columns[column].Name] = value;
  Transaction transaction(link);
  const TableWriter::KeySource key = table.FindKeySource(Pending);
  Added.SameBefore = key.SameBefore;
  TableWriter::Cells cells(Columns.size());
  try {
    table.Insert(cells, Pending, key);
    Added.Key = table.KeyOf(cells);
    transaction.Commit();
    InDoubt = true;  // until the row is in Rows, an exception leaves the outcome unknown
  } catch (...) {
    InDoubt = !transaction.RollBack();
    throw;
  }
  return cells;
}

void Recordset::Contents::Append(const TableWriter::Cells& cells) {
  Position = Rows.Count();
  Rows.Append(BlockOfRow(cells));
  Adding = false;
  Pending.clear();
  InDoubt = false;
}

bool Recordset::Contents::FindAdded(const NewRow& row) {
  TableWriter::Values values;
  for (const auto& [name, value] : row.Values) values[ColumnOf(name)] = value;
  TableWriter::Cells cells(Columns.size());
  const auto link = UpdateLink();
  TableWriter table(link->Get(), Source, Columns);
  if (!table.FindAdded(cells, std::move(values), row.SameBefore.value_or(std::vector<String>()),
                       row.Key))
    return false;
  Append(cells);
  return true;
}

void Recordset::Contents::ReadAgain() {
  const auto link = UpdateLink();
  TableWriter::Cells cells = CellsOfRow();
  TableWriter(link->Get(), Source, Columns).Read(cells);
  Rows.Replace(Position, BlockOfRow(cells));
  Pending.clear();
}

void Recordset::Contents::ColumnsCame(std::vector<Column> columns) {
  Columns = std::move(columns);
}

void Recordset::Contents::RowsCame(std::unique_ptr<RowBlock> rows) {
  Rows.Append(std::move(rows));
}

// Events are called last and through copies, because handlers may replace the recordset.

void Recordset::Contents::RowsTaken() {
  const std::int64_t count = Rows.Count();
  if (const auto event = Owner->FetchProgress) event(count, count);
}

void Recordset::Contents::FetchEnded(const Error* error, EventStatus status) {
  Fetch.reset();
  if (const auto event = Owner->FetchComplete) event(error, status);
}

}  // namespace ktrv::database
