#include "benchmarks/ContactFloor.h"

#include <sqlext.h>

#include "benchmarks/BareOdbc.h"

namespace ktrv::benchmarks {
namespace {

constexpr std::size_t kCellUnits = 128;
constexpr SQLUSMALLINT kColumns = 22;

SQLCHAR* Bytes(std::string& text) {
  return reinterpret_cast<SQLCHAR*>(text.data());
}

void ReadRow(BareOdbc& odbc, int contactId) {
  char16_t cells[kColumns][kCellUnits];
  SQLLEN lengths[kColumns];
  std::string sql = "SELECT * FROM SMS_ABCONTACTS WHERE ID = " + std::to_string(contactId);
  const SQLHANDLE statement = odbc.NewStatement();
  BareOdbc::Succeed(SQLExecDirect(statement, Bytes(sql), SQL_NTS), "select");
  for (SQLUSMALLINT column = 0; column < kColumns; ++column) {
    BareOdbc::Succeed(SQLBindCol(statement, static_cast<SQLUSMALLINT>(column + 1), SQL_C_WCHAR,
                                 cells[column], kCellUnits * sizeof(char16_t), &lengths[column]),
                      "bind a column");
  }
  BareOdbc::Succeed(SQLFetch(statement), "fetch");
  SQLFreeHandle(SQL_HANDLE_STMT, statement);
}

}  // namespace

void OpenByBareOdbc(const std::string& connectionString, int contactId) {
  BareOdbc odbc(connectionString);
  ReadRow(odbc, contactId);
}

void SaveByBareOdbc(const std::string& connectionString, int contactId, std::string city) {
  BareOdbc odbc(connectionString);
  ReadRow(odbc, contactId);
  std::string sql = "UPDATE SMS_ABCONTACTS SET CITY = ? WHERE ID = ?";
  SQLINTEGER id = contactId;
  SQLLEN length = SQL_NTS;
  const SQLHANDLE statement = odbc.NewStatement();
  BareOdbc::Succeed(SQLPrepare(statement, Bytes(sql), SQL_NTS), "prepare");
  BareOdbc::Succeed(SQLBindParameter(statement, 1, SQL_PARAM_INPUT, SQL_C_CHAR, SQL_VARCHAR, 50, 0,
                                     city.data(), 0, &length),
                    "bind the city");
  BareOdbc::Succeed(SQLBindParameter(statement, 2, SQL_PARAM_INPUT, SQL_C_SLONG, SQL_INTEGER, 0, 0,
                                     &id, 0, nullptr),
                    "bind the id");
  BareOdbc::Succeed(SQLExecute(statement), "update");
  SQLFreeHandle(SQL_HANDLE_STMT, statement);
  ReadRow(odbc, contactId);
}

}  // namespace ktrv::benchmarks
