#include "database/odbc/OdbcDriver.h"

#include <mutex>
#include <optional>

#include "common/Error.h"
#include "database/odbc/ConnectionString.h"
#include "database/odbc/Native.h"
#include "database/odbc/OdbcLink.h"

namespace ktrv::database {
namespace {

/// Serialises connecting with PostgreSQL's driver, because it reads the process's locale name,
/// which another connecting thread replaces. Also for a DSN, because its driver is not known here.
std::unique_lock<std::mutex> AloneWhereNeeded(StringView connectionString) {
  static std::mutex connecting;
  const String driver = ToUpperAscii(odbc::KeywordValue(connectionString, u"Driver"));
  const bool isAnother = !driver.empty() && driver.find(u"POSTGRES") == String::npos;
  return isAnother ? std::unique_lock<std::mutex>() : std::unique_lock(connecting);
}

}  // namespace

/// The environment handle, allocated by the first Open. So on a machine without ODBC opening fails,
/// not loading of the component.
class OdbcDriver::LazyEnvironment {
 public:
  SQLHANDLE Get() {
    const std::lock_guard lock(mutex_);
    if (!handle_) {
      SQLHANDLE raw = nullptr;
      if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &raw))) {
        throw Error(ErrorNumber::DriverFailure, u"ODBC is not available on this machine", u"ODBC");
      }
      handle_.emplace(raw);
      constexpr std::uintptr_t kVersion = SQL_OV_ODBC3;
      odbc::Checked(
          SQLSetEnvAttr(raw, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(kVersion), 0),
          SQL_HANDLE_ENV, raw, {});
    }
    return handle_->Get();
  }

 private:
  std::mutex mutex_;
  std::optional<odbc::EnvironmentHandle> handle_;
};

OdbcDriver::OdbcDriver() : environment_(std::make_unique<LazyEnvironment>()) {}

OdbcDriver::~OdbcDriver() = default;

std::unique_ptr<Link> OdbcDriver::Open(StringView connectionString, StringView user,
                                       StringView password) {
  const auto alone = AloneWhereNeeded(connectionString);
  return std::make_unique<odbc::OdbcLink>(environment_->Get(), connectionString, user, password);
}

}  // namespace ktrv::database
