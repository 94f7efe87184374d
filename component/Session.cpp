#include "component/Session.h"

namespace ktrv {

Session::Session(controls::Screen& screen, OperatingSystem& system,
                 database::Environment environment)
    : Screen(screen),
      System(system),
      Environment(std::move(environment)),
      LogFilePath(DefaultLogFilePath(system)),
      Logger(std::make_unique<ktrv::Logger>(
          system, [&screen](StringView text, StringView title, std::int32_t style) {
            return screen.ShowMessage(text, title, style);
          })) {
  RenewResults();
}

void Session::RenewResults() {
  SelectedRecipients = std::make_shared<TextCollection>();
  SelectedMobileNos = std::make_shared<TextCollection>();
  SelectedNames = std::make_shared<TextCollection>();
}

database::Connection& Session::OpenConnection() {
  if (!SessionConnection) {
    throw Error(ErrorNumber::ObjectNotSet, u"Object variable or With block variable not set");
  }
  if (SessionConnection->State() == database::ObjectState::Closed) {
    SessionConnection->Open(SessionConnectionString);
  }
  return *SessionConnection;
}

void Session::CloseConnection() {
  if (SessionConnection && SessionConnection->State() != database::ObjectState::Closed) {
    SessionConnection->Close();
  }
}

database::Connection& Session::RenewConnection() {
  // The object stays: commands of an address book window that is open are bound to it.
  CloseConnection();
  if (!SessionConnection) SessionConnection = std::make_unique<database::Connection>(Environment);
  return *SessionConnection;
}

std::int16_t Session::ShowMessage(StringView text, std::int32_t style) {
  return Logger->ShowMessage(text, style);
}

String DefaultLogFilePath(OperatingSystem& system) {
  return system.ComponentDirectory() + u"\\AddressBook.log";
}

}  // namespace ktrv
