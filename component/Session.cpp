#include "component/Session.h"

namespace ktrv {

Session::Session(controls::Screen& screen, OperatingSystem& system,
                 database::Environment environment)
    : Services(screen, system), Database(std::move(environment)) {
  Take(forms::Recipients());
}

Workplace Session::Place() {
  return {Services, Database.Another(), {SessionUserId, IsAdmin, RunAt}};
}

void Session::Take(const forms::ContactRequest& opened) {
  SharedMode = opened.SharedMode;
  EditContactId = opened.EditContactId;
  if (opened.Mode == ModeOfOperation::Modify) return;
  PresetContactName = opened.PresetContactName;
  PresetMobileNo = opened.PresetMobileNo;
}

void Session::Take(const forms::ContactResult& left) {
  SharedMode = left.SharedMode;
  EditContactId = left.EditContactId;
  if (!left.PresetMobileNo.empty()) PresetMobileNo = left.PresetMobileNo;
  const forms::SavedContact saved = left.Saved.value_or(forms::SavedContact{});
  SavedContactId = saved.Id;
  SavedContactName = saved.Name;
  SavedContactMobile = saved.Mobile;
  SavedContactEmail = saved.Email;
  SavedContactAddress = saved.Address;
  SavedContactOrganisation = saved.Organisation;
}

void Session::Take(const forms::FolderRequest& opened) {
  FolderType = opened.FolderType;
}

void Session::Take(const forms::FolderResult& left) {
  FolderType = left.FolderType;
  SavedFolderId = left.Saved ? left.Saved->Id : String();
  SavedFolderName = left.Saved ? left.Saved->Name : String();
  if (!left.Saved) return;
  SavedFolderType = left.Saved->Type;
  SavedFolderCategory = left.Saved->Category;
}

void Session::Take(const forms::GroupRequest& opened) {
  GroupType = opened.GroupType;
  GroupId = opened.GroupId;
  GroupName = opened.GroupName;
  if (opened.SharedMode == TypeOfContact::SharedContact) SharedMode = opened.SharedMode;
}

void Session::Take(const forms::GroupResult& left) {
  GroupType = left.GroupType;
  GroupId = left.Saved ? left.Saved->Id : String();
  GroupName = left.Saved ? left.Saved->Name : String();
}

void Session::Take(const forms::Recipients& picked) {
  SelectedRecipients = picked.Selected;
  SelectedMobileNos = picked.MobileNos;
  SelectedNames = picked.Names;
  ContactsName = picked.ContactsName;
}

}  // namespace ktrv
