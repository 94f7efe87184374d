#include "benchmarks/ImportFloor.h"

#include <sqlext.h>

#include <algorithm>
#include <array>
#include <cstdint>

#include "benchmarks/BareOdbc.h"
#include "benchmarks/UserInterfaceLoop.h"
#include "data/ImportQueries.h"

namespace ktrv::benchmarks {
namespace {

constexpr std::size_t kBlock = 1000;
constexpr std::size_t kUnits = 100;  ///< of a cell
constexpr std::size_t kColumns = 21;
constexpr std::size_t kAge = 17;
constexpr std::size_t kFirstDate = 19;

/// The arrays of a column.
struct CellArray {
  std::vector<char16_t> Units = std::vector<char16_t>(kBlock * kUnits);
  std::vector<SQLLEN> Bytes = std::vector<SQLLEN>(kBlock);

  void Set(std::size_t row, const std::optional<String>& text) {
    Bytes[row] = SQL_NULL_DATA;
    if (!text) return;
    const std::size_t size = text->copy(&Units[row * kUnits], kUnits);
    Bytes[row] = static_cast<SQLLEN>(size * sizeof(char16_t));
  }
};

SQLSMALLINT TypeOfColumn(std::size_t column) {
  if (column == 0) return SQL_INTEGER;
  if (column == kAge) return SQL_DOUBLE;
  return column >= kFirstDate ? SQL_TYPE_DATE : SQL_WVARCHAR;
}

SQLPOINTER AsPointer(std::uintptr_t number) {
  return reinterpret_cast<SQLPOINTER>(number);
}

}  // namespace

double InsertByBareOdbc(const std::string& connectionString,
                        const std::vector<ContactCells>& contacts) {
  const auto start = Clock::now();
  BareOdbc odbc(connectionString);
  odbc.CommitByHand();
  const SQLHANDLE statement = odbc.NewStatement();
  std::string text = ToUtf8(data::ImportQueries::kInsertContact);
  BareOdbc::Succeed(SQLPrepare(statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS),
                    "prepare");
  std::array<CellArray, kColumns> arrays;
  for (std::size_t column = 0; column < kColumns; ++column) {
    BareOdbc::Succeed(
        SQLBindParameter(statement, static_cast<SQLUSMALLINT>(column + 1), SQL_PARAM_INPUT,
                         SQL_C_WCHAR, TypeOfColumn(column), kUnits, 0, arrays[column].Units.data(),
                         kUnits * sizeof(char16_t), arrays[column].Bytes.data()),
        "bind a column");
  }
  for (std::size_t first = 0; first < contacts.size(); first += kBlock) {
    const std::size_t rows = std::min(kBlock, contacts.size() - first);
    for (std::size_t row = 0; row < rows; ++row) {
      for (std::size_t column = 0; column < kColumns; ++column) {
        arrays[column].Set(row, contacts[first + row][column]);
      }
    }
    BareOdbc::Succeed(SQLSetStmtAttr(statement, SQL_ATTR_PARAMSET_SIZE, AsPointer(rows), 0),
                      "set the number of rows");
    BareOdbc::Succeed(SQLExecute(statement), "insert");
    odbc.Commit();
  }
  SQLFreeHandle(SQL_HANDLE_STMT, statement);
  return SecondsSince(start);
}

}  // namespace ktrv::benchmarks
