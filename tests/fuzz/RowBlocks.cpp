#include <memory>
#include <optional>
#include <vector>

#include "database/RowBlock.h"
#include "database/RowStore.h"
#include "tests/fuzz/Input.h"

namespace ktrv::fuzz {
namespace {

using database::RowBlock;
using Row = std::vector<std::optional<String>>;

/// Null, short, or near the lengths from which the packed form changes.
std::optional<String> Cell(Input& input) {
  constexpr std::size_t kLong = 0xFFFE;
  const std::size_t kind = input.Byte();
  if (kind < 0x20) return std::nullopt;
  const auto unit = input.Raw<char16_t>();
  if (kind < 0xF8) return String(kind % 0x20, unit);
  return String(kLong - 4 + kind % 8, unit) + String(input.Number(0x20), u'e');
}

std::unique_ptr<RowBlock> Packed(const std::vector<Row>& rows, std::size_t columns) {
  auto block = std::make_unique<RowBlock>(columns, rows.size());
  for (const Row& row : rows) {
    block->BeginRow();
    for (const auto& cell : row) cell ? block->Add(*cell) : block->AddNull();
  }
  block->Finish();
  Demand(block->Rows() == rows.size() && block->Columns() == columns, "the size of a block");
  return block;
}

void Try(Input input) {
  const std::size_t columns = 1 + input.Number(4);
  const auto rowsOf = [&](std::size_t count) {
    std::vector<Row> rows(count);
    for (Row& row : rows) {
      for (std::size_t column = 0; column < columns; ++column) row.push_back(Cell(input));
    }
    return rows;
  };
  std::vector<Row> wanted;
  database::RowStore store;
  const auto check = [&](std::size_t row) {
    for (std::size_t column = 0; column < columns; ++column) {
      const auto cell = store.Cell(static_cast<std::int64_t>(row), column);
      Demand(cell == wanted[row][column], "a cell is as it was put in");
    }
  };
  while (!input.AtEnd()) {
    const std::size_t act = input.Byte();
    if (act % 4 == 0 && !wanted.empty()) {
      const std::size_t at = input.Number(wanted.size() - 1);
      const auto row = rowsOf(1);
      store.Replace(static_cast<std::int64_t>(at), Packed(row, columns));
      wanted[at] = row[0];
    } else {
      const auto rows = rowsOf(act % 8);
      store.Append(Packed(rows, columns));
      wanted.insert(wanted.end(), rows.begin(), rows.end());
    }
    Demand(store.Count() == static_cast<std::int64_t>(wanted.size()), "the count of rows");
    if (!wanted.empty()) check(input.Number(wanted.size() - 1));
  }
  for (std::size_t row = wanted.size(); row-- > 0;) check(row);
}

}  // namespace
}  // namespace ktrv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ktrv::fuzz::Try(ktrv::fuzz::Input(data, size));
  return 0;
}
