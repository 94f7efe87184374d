#include "database/odbc/OdbcDriver.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

#include "database/odbc/ConnectionString.h"
#include "database/odbc/OdbcLink.h"

namespace ktrv::database {
namespace {

/// Serialises connecting with PostgreSQL's driver, because it reads the process's locale name,
/// which another connecting thread replaces. Also for a DSN, because its driver is not known here.
/// A connect that hangs delays others for a second only: it waits for its server by then.
class Connecting {
 public:
  explicit Connecting(StringView connectionString) {
    if (!odbc::MayBePostgreSql(connectionString)) return;
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

std::unique_ptr<Link> OdbcDriver::Open(StringView connectionString, StringView user,
                                       StringView password) {
  const Connecting connecting(connectionString);
  return std::make_unique<odbc::OdbcLink>(connectionString, user, password);
}

}  // namespace ktrv::database
