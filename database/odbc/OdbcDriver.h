#pragma once

#include "database/Driver.h"

namespace ktrv::database {

/// Opens links through the ODBC driver manager: unixODBC natively and under Wine, the system's on
/// Windows. Thread-safe.
class OdbcDriver final : public Driver {
 public:
  std::unique_ptr<Link> Open(StringView connectionString, StringView user,
                             StringView password) override;
};

}  // namespace ktrv::database
