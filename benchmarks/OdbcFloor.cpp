#include "benchmarks/OdbcFloor.h"

#include <sql.h>
#include <sqlext.h>

#include <vector>

#include "benchmarks/BareOdbc.h"
#include "benchmarks/UserInterfaceLoop.h"

namespace ktrv::benchmarks {
namespace {

constexpr std::size_t kBlockRows = 500;
constexpr std::size_t kCellUnits = 256;

SQLCHAR* Bytes(const std::string& text) {
  return reinterpret_cast<SQLCHAR*>(const_cast<char*>(text.c_str()));
}

struct ColumnOfBlock {
  std::vector<char16_t> Units = std::vector<char16_t>(kBlockRows * kCellUnits);
  std::vector<SQLLEN> Lengths = std::vector<SQLLEN>(kBlockRows);
};

SQLPOINTER Number(std::uintptr_t number) {
  return reinterpret_cast<SQLPOINTER>(number);
}

}  // namespace

FloorResult FetchByBareOdbc(const std::string& connectionString, const std::string& sql) {
  const auto start = Clock::now();
  FloorResult result;
  BareOdbc odbc(connectionString);
  const SQLHANDLE statement = odbc.NewStatement();
  SQLULEN fetched = 0;
  SQLSetStmtAttr(statement, SQL_ATTR_ROW_ARRAY_SIZE, Number(kBlockRows), 0);
  SQLSetStmtAttr(statement, SQL_ATTR_ROWS_FETCHED_PTR, &fetched, 0);
  BareOdbc::Succeed(SQLExecDirect(statement, Bytes(sql), SQL_NTS), "execute");
  SQLSMALLINT columns = 0;
  BareOdbc::Succeed(SQLNumResultCols(statement, &columns), "columns");
  std::vector<ColumnOfBlock> block(static_cast<std::size_t>(columns));
  for (std::size_t index = 0; index < block.size(); ++index) {
    BareOdbc::Succeed(SQLBindCol(statement, static_cast<SQLUSMALLINT>(index + 1), SQL_C_WCHAR,
                                 block[index].Units.data(), kCellUnits * sizeof(char16_t),
                                 block[index].Lengths.data()),
                      "bind");
  }
  while (BareOdbc::Succeed(SQLFetch(statement), "fetch") != SQL_NO_DATA) {
    if (result.Rows == 0) result.FirstRow = SecondsSince(start);
    result.Rows += static_cast<std::int64_t>(fetched);
  }
  return result;
}

}  // namespace ktrv::benchmarks
