#pragma once

#include "database/Driver.h"
#include "database/odbc/OdbcDriver.h"

namespace ktrv::windows {

/// The database libraries of this system.
class Drivers {
 public:
  /// The library that the connection string belongs to. Any thread.
  /// \throws Error DriverFailure when there is none.
  database::Driver& For(StringView connectionString);

 private:
  database::OdbcDriver odbc_;
};

}  // namespace ktrv::windows
