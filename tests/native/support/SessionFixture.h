#pragma once

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <vector>

#include "component/Session.h"
#include "tests/native/support/FakeDriver.h"
#include "tests/native/support/FakeOperatingSystem.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::tests {

/// A session after a host's Init for an administrator, with a scripted screen, a log in memory and
/// a driver that answers as the test says.
class SessionFixture : public testing::Test {
 protected:
  static constexpr StringView kFake = u"DSN=Test";

  SessionFixture() {
    session.LogFilePath = u"log";
    session.Database.Renew();
    session.SessionConnectionString = kFake;
    session.DbType = u"SQL";
    session.IsAdmin = UserType::Administrator;
    session.InitDone = 1;
  }

  String Log() const { return system.TextOf(u"log"); }
  /// How many error records with this context text the log holds.
  int ErrorsLogged(StringView context) const {
    return TimesLogged(u"\n" + String(context) + u"\r\nError Date/Time   : ");
  }
  /// How many error records the log holds.
  int ErrorsLogged() const { return TimesLogged(u"Error Number      : "); }
  /// Whether an error record with this number is in the log.
  bool LoggedNumber(std::int32_t number) const {
    return TimesLogged(u"Error Number      : " + ToDecimal(number) + u"\r\n") > 0;
  }
  /// Texts that ran on the fake driver and contain this part.
  std::vector<FakeDriver::Execution> Ran(StringView part) const {
    std::vector<FakeDriver::Execution> ran = driver.Executed();
    std::erase_if(ran, [&](const auto& each) { return each.Text.find(part) == String::npos; });
    return ran;
  }

  FakeDriver driver;
  /// The driver for a connection string; a fixture with a database of its own replaces it.
  std::function<database::Driver&(StringView connectionString)> DriverFor =
      [this](StringView) -> database::Driver& { return driver; };
  bool outage = false;  ///< no link can be opened
  ScriptedScreen screen;
  FakeOperatingSystem system;
  Session session{screen,
                  system,
                  {[this](StringView connectionString) -> database::Driver& {
                     if (outage) throw Error(ErrorNumber::DriverFailure, u"no server");
                     return DriverFor(connectionString);
                   },
                   screen.Dispatcher.Post()}};

 private:
  int TimesLogged(const String& part) const {
    const String log = Log();
    int count = 0;
    for (std::size_t at = log.find(part); at != String::npos; at = log.find(part, at + 1)) ++count;
    return count;
  }
};

}  // namespace ktrv::tests
