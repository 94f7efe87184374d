#include "benchmarks/ExportFloor.h"

#include <sqlext.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <vector>

#include "benchmarks/BareOdbc.h"
#include "common/Text.h"

namespace ktrv::benchmarks {
namespace {

/// Wide text: narrow text loses characters on drivers whose code page is not UTF-8.
struct Cell {
  std::array<char16_t, 512> Units;
  SQLLEN Length;
};

/// Writes the cell's text in UTF-8. \return the end
char* WriteCell(char* to, const Cell& cell) {
  const StringView text(cell.Units.data(),
                        static_cast<std::size_t>(cell.Length) / sizeof(char16_t));
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] >= 0x80) {
      const std::string rest = ToUtf8(text.substr(at));
      return std::copy(rest.begin(), rest.end(), to);
    }
    *to++ = static_cast<char>(text[at]);
  }
  return to;
}

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
        SQLBindCol(statement, static_cast<SQLUSMALLINT>(index + 1), SQL_C_WCHAR,
                   cells[index].Units.data(), static_cast<SQLLEN>(sizeof cells[index].Units),
                   &cells[index].Length),
        "bind");
  }
  std::ofstream file(name, std::ios::binary);
  constexpr std::size_t kLong = 65536;
  const std::size_t longestRow = cells.size() * 3 * cells[0].Units.size();
  std::vector<char> block(kLong + longestRow);
  char* to = block.data();
  const auto flush = [&] {
    file.write(block.data(), to - block.data());
    to = block.data();
  };
  while (BareOdbc::Succeed(SQLFetch(statement), "fetch") != SQL_NO_DATA) {
    for (const Cell& cell : cells) {
      if (cell.Length > 0) to = WriteCell(to, cell);
      *to++ = ',';
    }
    *to++ = '\n';
    if (to - block.data() >= static_cast<std::ptrdiff_t>(kLong)) flush();
  }
  flush();
}

}  // namespace ktrv::benchmarks
