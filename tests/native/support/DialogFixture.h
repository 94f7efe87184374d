#pragma once

#include "tests/native/support/AddressBookDatabase.h"
#include "tests/native/support/SessionFixture.h"

namespace ktrv::tests {

/// A base of its own, so that the database outlives the session that works on it.
struct OwnDatabase {
  AddressBookDatabase database;
};

/// A session on a real database that is empty at first or, after UseFakeDriver, on the fake driver.
class DialogFixture : protected OwnDatabase, public SessionFixture {
 protected:
  DialogFixture() {
    DriverFor = [this](StringView connectionString) -> database::Driver& {
      if (connectionString == kFake) return driver;
      return database.Driver();
    };
    session.SessionConnectionString = database.ConnectionString();
    session.SessionUserId = 7;
  }

  void UseFakeDriver() { session.SessionConnectionString = kFake; }
};

}  // namespace ktrv::tests
