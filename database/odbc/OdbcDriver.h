#pragma once

#include <memory>

#include "database/Driver.h"

namespace ktrv::database {

/// Opens links through the ODBC driver manager: unixODBC natively and under Wine, the system's on
/// Windows. Thread-safe.
class OdbcDriver final : public Driver {
 public:
  OdbcDriver();
  ~OdbcDriver() override;
  OdbcDriver(const OdbcDriver&) = delete;
  OdbcDriver& operator=(const OdbcDriver&) = delete;

  std::unique_ptr<Link> Open(StringView connectionString, StringView user,
                             StringView password) override;

 private:
  class LazyEnvironment;
  std::unique_ptr<LazyEnvironment> environment_;
};

}  // namespace ktrv::database
