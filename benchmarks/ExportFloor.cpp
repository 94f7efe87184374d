#include "benchmarks/ExportFloor.h"

#include <sqlext.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <vector>

#include "benchmarks/BareOdbc.h"

namespace ktrv::benchmarks {
namespace {

/// Narrow text: SQLite's is UTF-8, as the file's, and its driver for Linux passes it unchanged.
struct Cell {
  std::array<char, 1024> Bytes;
  SQLLEN Length;
};

}  // namespace

void ExportByBareOdbc(const std::string& connectionString, const std::string& sql,
                      const std::string& name) {
  BareOdbc odbc(connectionString);
  const SQLHANDLE statement = odbc.NewStatement();
  std::string text = sql;
  BareOdbc::Succeed(SQLExecDirect(statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS),
                    "execute");
  SQLSMALLINT columns = 0;
  BareOdbc::Succeed(SQLNumResultCols(statement, &columns), "columns");
  std::vector<Cell> cells(static_cast<std::size_t>(columns));
  for (std::size_t index = 0; index < cells.size(); ++index) {
    BareOdbc::Succeed(
        SQLBindCol(statement, static_cast<SQLUSMALLINT>(index + 1), SQL_C_CHAR,
                   cells[index].Bytes.data(), static_cast<SQLLEN>(sizeof cells[index].Bytes),
                   &cells[index].Length),
        "bind");
  }
  std::ofstream file(name, std::ios::binary);
  constexpr std::size_t kLong = 65536;
  const std::size_t longestRow = cells.size() * (cells[0].Bytes.size() + 1);
  std::vector<char> block(kLong + longestRow);
  char* to = block.data();
  const auto flush = [&] {
    file.write(block.data(), to - block.data());
    to = block.data();
  };
  while (BareOdbc::Succeed(SQLFetch(statement), "fetch") != SQL_NO_DATA) {
    for (const Cell& cell : cells) {
      if (cell.Length > 0) to = std::copy_n(cell.Bytes.data(), cell.Length, to);
      *to++ = ',';
    }
    *to++ = '\n';
    if (to - block.data() >= static_cast<std::ptrdiff_t>(kLong)) flush();
  }
  flush();
}

}  // namespace ktrv::benchmarks
