#pragma once

#include "database/KeepingDriver.h"
#include "database/ado/AdoDriver.h"
#include "database/odbc/OdbcDriver.h"

namespace ktrv::windows {

/// The database drivers of the component.
class Drivers {
 public:
  /// The driver for a connection string: ADO with "Provider=", otherwise ODBC, which is what ADO
  /// would use too. Thread-safe.
  database::Driver& For(StringView connectionString);

  /// Closes the links that ODBC keeps. The component keeps no links of ADO.
  void CloseKept() noexcept { kept_.CloseKept(); }

 private:
  database::AdoDriver ado_;
  database::OdbcDriver odbc_;
  database::KeepingDriver kept_{odbc_};
};

}  // namespace ktrv::windows
