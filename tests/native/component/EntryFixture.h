#pragma once

#include <gmock/gmock.h>

#include "component/clsMain.h"
#include "tests/native/support/FakeDriver.h"
#include "tests/native/support/FakeOperatingSystem.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::tests {

/// A thread's session with one clsMain on a scripted database that knows an administrator (1), a
/// general user (2) and nobody else, and one folder, the shared folder 4.
class EntryFixture : public testing::Test {
 protected:
  static constexpr StringView kLog = u"C:\\logs\\book.log";
  static constexpr StringView kConnection = u"DSN=Test";
  static constexpr std::int32_t kClient = 0;
  static constexpr std::int32_t kServer = 1;

  EntryFixture() {
    driver.Answer(u"", {{u"NONE"}}, {});
    KnowUser(1, u"1");
    KnowUser(2, u"0");
    driver.Answer(u"SELECT TYPE FROM SMS_ABFOLDERS WHERE ID = 4", {{u"TYPE"}}, {{u"S"}});
  }

  void KnowUser(int id, std::optional<String> admin) {
    driver.Answer(u"FROM SMS_USERS WHERE  DISABLED = 0 AND DELETED =  0  AND ID = " + ToDecimal(id),
                  {{u"ADMIN", database::DataType::Integer}}, {{std::move(admin)}});
  }

  void Initialise(std::int32_t runFor = kClient) {
    ASSERT_EQ(main.Init(u"", kConnection, runFor, u"SQL", kLog), 1);
  }

  String Log() const { return system.TextOf(kLog); }
  bool Logged(StringView line) const {
    return (u"\n" + Log()).find(u"\n" + String(line) + u"\r\n") != String::npos;
  }
  bool LoggedError(StringView context, std::int32_t number) const {
    const String log = Log();
    const std::size_t at = log.find(String(context) + u"\r\nError Date/Time");
    if (at == String::npos) return false;
    const StringView label = u"Error Number      : ";
    const std::size_t place = log.find(label, at) + label.size();
    return log.substr(place, log.find(u'\r', place) - place) == ToDecimal(number);
  }
  bool IsConnected() const {
    return session.SessionConnection->State() == database::ObjectState::Open;
  }
  std::string LastQuery() const { return ToUtf8(driver.Executed().back().Text); }
  /// The next dialog's caption, which the user closes at once.
  void CloseNextDialog(String* caption = nullptr) {
    screen.PlayModal([caption](controls::Form& form) {
      if (caption) *caption = form.Caption();
      form.UserCloses();
    });
  }

  FakeDriver driver;
  ScriptedScreen screen;
  FakeOperatingSystem system;
  Session session{
      screen,
      system,
      {[this](StringView) -> database::Driver& { return driver; }, screen.Dispatcher.Post()}};
  Dialogs dialogs{session};
  std::unique_ptr<clsMain> last = std::make_unique<clsMain>(session, dialogs);
  clsMain& main = *last;
};

}  // namespace ktrv::tests
