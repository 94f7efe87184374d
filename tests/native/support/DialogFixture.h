#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "component/Session.h"
#include "tests/native/support/AddressBookDatabase.h"
#include "tests/native/support/FakeDriver.h"
#include "tests/native/support/FakeOperatingSystem.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::tests {

/// A session as a host's initialisation leaves it, on a real database that is empty at first or,
/// after UseFakeDriver, on one that answers as the test says.
class DialogFixture : public testing::Test {
 protected:
  DialogFixture()
      : session(screen, system,
                {[this](StringView connectionString) -> database::Driver& {
                   if (outage) throw Error(ErrorNumber::DriverFailure, u"no server");
                   if (connectionString == kFake) return driver;
                   return database.Driver();
                 },
                 screen.Dispatcher.Post()}) {
    session.LogFilePath = u"log";
    session.Database.Renew();
    session.SessionConnectionString = database.ConnectionString();
    session.DbType = u"SQL";
    session.SessionUserId = 7;
    session.IsAdmin = UserType::Administrator;
    session.InitDone = 1;
  }

  void UseFakeDriver() { session.SessionConnectionString = kFake; }
  String Log() const { return system.TextOf(u"log"); }

  /// How many error records with this context text the log holds.
  int ErrorsLogged(StringView context) const {
    const String line = u"\n" + String(context) + u"\r\nError Date/Time   : ";
    const String log = Log();
    int count = 0;
    for (std::size_t at = log.find(line); at != String::npos; at = log.find(line, at + 1)) ++count;
    return count;
  }
  /// Whether an error record with this number is in the log.
  bool LoggedNumber(std::int32_t number) const {
    return Log().find(u"Error Number      : " + ToDecimal(number) + u"\r\n") != String::npos;
  }

  static constexpr StringView kFake = u"DSN=Test";

  AddressBookDatabase database;
  FakeDriver driver;
  bool outage = false;  ///< no link can be opened
  ScriptedScreen screen;
  FakeOperatingSystem system;
  Session session;
};

}  // namespace ktrv::tests
