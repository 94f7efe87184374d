#pragma once

#include <future>
#include <gtest/gtest.h>
#include <thread>

#include "common/Error.h"
#include "database/Transaction.h"
#include "tests/native/support/AddressBookDatabase.h"

namespace ktrv::tests {

/// Another user, on a thread of its own, whose statements have run in a transaction that is stored
/// only when the caller has had the time to come to its locks.
class OtherUser {
 public:
  /// Returns when the statements have run. \param last more of them, just before the commit
  OtherUser(AddressBookDatabase& database, std::vector<String> statements,
            std::vector<String> last = {}) {
    std::promise<void> ran;
    std::future<void> hasRun = ran.get_future();
    thread_ = std::thread([&database, statements = std::move(statements), last = std::move(last),
                           ran = std::move(ran)]() mutable {
      try {
        database::Connection connection(database.Surroundings());
        connection.Open(database.ConnectionString());
        database::Transaction transaction(connection);
        for (const String& statement : statements) connection.Execute(statement);
        ran.set_value();
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        for (const String& statement : last) connection.Execute(statement);
        transaction.Commit();
      } catch (const Error& error) {
        ADD_FAILURE() << "the other user: " << ToUtf8(error.Description());
      }
    });
    hasRun.wait();  // a promise that is broken ends it too
  }
  ~OtherUser() { Wait(); }
  OtherUser(const OtherUser&) = delete;
  OtherUser& operator=(const OtherUser&) = delete;

  /// Waits until the transaction has ended.
  void Wait() {
    if (thread_.joinable()) thread_.join();
  }

 private:
  std::thread thread_;
};

}  // namespace ktrv::tests
