#include "database/odbc/OdbcDriver.h"

#include <chrono>
#include <condition_variable>
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
/// A connect that hangs delays others for a second only: it waits for its server by then.
class Connecting {
 public:
  explicit Connecting(StringView connectionString) {
    const String driver = ToUpperAscii(odbc::KeywordValue(connectionString, u"Driver"));
    if (!driver.empty() && driver.find(u"POSTGRES") == String::npos) return;
    std::unique_lock lock(shared_.Mutex);
    alone_ =
        shared_.Ended.wait_for(lock, std::chrono::seconds(1), [this] { return !shared_.Busy; });
    if (alone_) shared_.Busy = true;
  }
  ~Connecting() {
    if (!alone_) return;
    const std::lock_guard lock(shared_.Mutex);
    shared_.Busy = false;
    shared_.Ended.notify_one();
  }
  Connecting(const Connecting&) = delete;
  Connecting& operator=(const Connecting&) = delete;

 private:
  struct Shared {
    std::mutex Mutex;
    std::condition_variable Ended;
    bool Busy = false;
  };
  static Shared& OfProcess() {
    static auto* const shared = new Shared;  // never deleted: abandoned calls may outlive main
    return *shared;
  }

  Shared& shared_ = OfProcess();
  bool alone_ = false;
};

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
  const Connecting connecting(connectionString);
  return std::make_unique<odbc::OdbcLink>(environment_->Get(), connectionString, user, password);
}

}  // namespace ktrv::database
