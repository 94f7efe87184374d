#include "benchmarks/BareOdbc.h"

#include <sqlext.h>

#include <cstdint>
#include <stdexcept>

namespace ktrv::benchmarks {

BareOdbc::BareOdbc(const std::string& connectionString) {
  Succeed(SQLAllocHandle(SQL_HANDLE_ENV, nullptr, &environment_), "environment");
  SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION,
                reinterpret_cast<SQLPOINTER>(std::uintptr_t{SQL_OV_ODBC3}), 0);
  Succeed(SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_), "connection");
  Succeed(SQLDriverConnect(connection_, nullptr,
                           reinterpret_cast<SQLCHAR*>(const_cast<char*>(connectionString.c_str())),
                           SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT),
          "connect");
}

BareOdbc::~BareOdbc() {
  SQLDisconnect(connection_);  // frees its statements
  SQLFreeHandle(SQL_HANDLE_DBC, connection_);
  SQLFreeHandle(SQL_HANDLE_ENV, environment_);
}

SQLHANDLE BareOdbc::NewStatement() {
  SQLHANDLE statement = nullptr;
  Succeed(SQLAllocHandle(SQL_HANDLE_STMT, connection_, &statement), "statement");
  return statement;
}

void BareOdbc::CommitByHand() {
  Succeed(SQLSetConnectAttr(connection_, SQL_ATTR_AUTOCOMMIT,
                            reinterpret_cast<SQLPOINTER>(std::uintptr_t{SQL_AUTOCOMMIT_OFF}), 0),
          "commit by hand");
}

void BareOdbc::Commit() {
  Succeed(SQLEndTran(SQL_HANDLE_DBC, connection_, SQL_COMMIT), "commit");
}

SQLRETURN BareOdbc::Succeed(SQLRETURN result, const char* what) {
  if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA) throw std::runtime_error(what);
  return result;
}

}  // namespace ktrv::benchmarks
