#pragma once

#include <memory>

#include "database/Driver.h"

namespace ktrv::database {

/// Opens links through ODBC's driver manager: unixODBC here and under Wine, the system's own on
/// Windows. One object serves any number of threads.
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
