#pragma once

#include "database/KeepingDriver.h"
#include "database/LimitedDriver.h"
#include "database/ado/AdoDriver.h"
#include "database/odbc/OdbcDriver.h"

namespace ktrv::windows {

/// The database drivers of the component.
class Drivers {
 public:
  Drivers();

  /// The driver for a connection string: ADO with "Provider=", otherwise ODBC, which is what ADO
  /// would use too. Thread-safe.
  database::Driver& For(StringView connectionString);

  /// Closes the links that ODBC keeps, and ends its idle threads. The component keeps no links of
  /// ADO.
  void CloseKept() noexcept;

 private:
  database::AdoDriver ado_;
  database::OdbcDriver odbc_;
  database::LimitedDriver limited_;
  database::KeepingDriver kept_{limited_};
};

}  // namespace ktrv::windows
