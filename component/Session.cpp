#include "component/Session.h"

namespace ktrv {

Session::Session(controls::Screen& screen, OperatingSystem& system,
                 database::Environment environment)
    : services_(new Services{
          {},
          DefaultLogFilePath(system),
          ktrv::Logger(system,
                       [&screen](StringView text, StringView title, std::int32_t style) {
                         return screen.ShowMessage(text, title, style);
                       })}),
      Screen(screen),
      System(system),
      Environment(std::move(environment)),
      Modal(services_->Modal),
      LogFilePath(services_->LogFilePath),
      Logger(&services_->Logger) {
  RenewResults();
}

Session::Session(Session& opener)
    : SessionValues(opener),
      services_(opener.services_),
      host_(opener.host_ ? opener.host_ : &opener),
      Screen(opener.Screen),
      System(opener.System),
      Environment(opener.Environment),
      Modal(services_->Modal),
      LogFilePath(services_->LogFilePath),
      Logger(&services_->Logger) {
  if (opener.SessionConnection) {
    SessionConnection = std::make_unique<database::Connection>(Environment);
  }
}

void Session::ShowModal(Purpose purpose, controls::Form& dialog) {
  struct Publication {
    Session& Host;
    Purpose What;
    const Session& From;
    String NamesBefore;

    void Publish() const {
      Host.Take(What, From);
      // A group editor that is cancelled takes the names of an earlier selection away.
      if (From.ContactsName != NamesBefore) Host.ContactsName = From.ContactsName;
    }
  };
  constexpr auto kindOf = [](Purpose each) {
    using Kind = ModalDialogs::Kind;
    return each == Purpose::Contact  ? Kind::Contact
           : each == Purpose::Folder ? Kind::Folder
                                     : Kind::Group;
  };
  const Publication publication{host_ ? *host_ : *this, purpose, *this, ContactsName};
  publication.Publish();
  try {
    Modal.Show(kindOf(purpose), dialog);
  } catch (...) {
    publication.Publish();
    throw;
  }
  publication.Publish();
}

void Session::Take(Purpose purpose, const SessionValues& dialog) {
  switch (purpose) {
    case Purpose::Contact:
      SharedMode = dialog.SharedMode;
      EditContactId = dialog.EditContactId;
      PresetContactName = dialog.PresetContactName;
      PresetMobileNo = dialog.PresetMobileNo;
      SavedContactId = dialog.SavedContactId;
      SavedContactName = dialog.SavedContactName;
      SavedContactMobile = dialog.SavedContactMobile;
      SavedContactEmail = dialog.SavedContactEmail;
      SavedContactAddress = dialog.SavedContactAddress;
      SavedContactOrganisation = dialog.SavedContactOrganisation;
      return;
    case Purpose::Folder:
      FolderType = dialog.FolderType;
      SavedFolderId = dialog.SavedFolderId;
      SavedFolderName = dialog.SavedFolderName;
      SavedFolderType = dialog.SavedFolderType;
      SavedFolderCategory = dialog.SavedFolderCategory;
      return;
    case Purpose::Group:
      GroupId = dialog.GroupId;
      GroupName = dialog.GroupName;
      GroupType = dialog.GroupType;
      return;
    case Purpose::Recipients:
      GroupType = dialog.GroupType;
      SelectedRecipients = dialog.SelectedRecipients;
      SelectedMobileNos = dialog.SelectedMobileNos;
      SelectedNames = dialog.SelectedNames;
      ContactsName = dialog.ContactsName;
      return;
  }
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
  // The host may have named another database since.
  if (SessionConnection->ConnectionString() != SessionConnectionString) CloseConnection();
  if (SessionConnection->State() == database::ObjectState::Closed) {
    SessionConnection->Open(SessionConnectionString);
  }
  return *SessionConnection;
}

void Session::TakeConnectionOf(Session& other) {
  SessionConnection.swap(other.SessionConnection);
  other.CloseConnection();
}

void Session::CloseConnection() {
  if (SessionConnection && SessionConnection->State() != database::ObjectState::Closed) {
    SessionConnection->Close();
  }
}

database::Connection& Session::RenewConnection() {
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
