#include "component/Session.h"

namespace ktrv {

Session::Session(controls::Screen& screen, OperatingSystem& system,
                 database::Environment environment)
    : services_(std::make_shared<ktrv::Services>(screen, system)),
      Services(*services_),
      Database(std::move(environment)) {
  RenewResults();
}

Session::Session(Session& opener)
    : SessionValues(opener),
      services_(opener.services_),
      host_(opener.host_ ? opener.host_ : &opener),
      Services(*services_),
      Database(opener.Database.Another()) {}

Workplace Session::Place() const {
  return {Services,
          Database.Another(),
          {SessionUserId, static_cast<UserType>(IsAdmin), static_cast<RunApplicationAt>(RunAt)}};
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
    return each == Purpose::Contact ? Kind::Contact : Kind::Group;
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

void Session::Take(const forms::FolderRequest& opened) {
  FolderType = static_cast<std::int32_t>(opened.FolderType);
}

void Session::Take(const forms::FolderResult& left) {
  FolderType = static_cast<std::int32_t>(left.FolderType);
  if (left.Saved) {
    SavedFolderId = left.Saved->Id;
    SavedFolderName = left.Saved->Name;
    SavedFolderType = left.Saved->Type;
    SavedFolderCategory = left.Saved->Category;
  } else {
    SavedFolderId.clear();
    SavedFolderName.clear();
  }
}

void Session::RenewResults() {
  SelectedRecipients = std::make_shared<TextCollection>();
  SelectedMobileNos = std::make_shared<TextCollection>();
  SelectedNames = std::make_shared<TextCollection>();
}

}  // namespace ktrv
