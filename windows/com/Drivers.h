#pragma once

#include "database/KeepingDriver.h"
#include "database/ado/AdoDriver.h"
#include "database/odbc/OdbcDriver.h"

namespace ktrv::windows {

/// The database libraries of this system.
class Drivers {
 public:
  /// The library that the connection string belongs to: with "Provider=" ADO, else ODBC, which is
  /// what ADO itself would do with it. Any thread.
  database::Driver& For(StringView connectionString);

  /// Closes the links that ODBC keeps; ADO has its own way.
  void CloseKept() noexcept { kept_.CloseKept(); }

 private:
  database::AdoDriver ado_;
  database::OdbcDriver odbc_;
  database::KeepingDriver kept_{odbc_};
};

}  // namespace ktrv::windows
