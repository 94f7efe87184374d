#include "forms/groups/JobProgress.h"
#include "forms/groups/RecipientPick.h"
#include "forms/groups/frmGroupsNew.h"

// What OK and Cancel do.
namespace ktrv::forms {
namespace {

/// Context texts of error records, as log readers match them.
namespace Context {
constexpr StringView kValidate =
    u"KTRVAddressBook: Error occurred. Sub:Validate_Data(), Module: frmGroupsNew()";
constexpr StringView kSave =
    u"KTRVAddressBook: Error occurred. Sub:Save_Data(), Module: frmGroupsNew()";
}  // namespace Context

}  // namespace

void frmGroupsNew::TakeSessionBack() {
  session_.GroupType = groupType_;
  session_.ExpandGroups = expandGroups_;
  // A picker has no group: id and name stay those of the group whose properties were shown last.
  if (!IsPicker()) session_.GroupId = groupId_;
}

void frmGroupsNew::cmdOK_Click() {
  TakeSessionBack();
  if (!Validate_Data()) return;
  if (!IsPicker() && IsShared() && !MembersMayBeReplaced()) return;
  if (!Save_Data()) return;
  saved_ = true;
  Unload();
}

void frmGroupsNew::cmdCancel_Click() {
  ClearResults();
  Unload();
}

bool frmGroupsNew::Validate_Data() {
  if (IsPicker()) return true;
  const auto refuse = [&](StringView message) {
    session_.ShowMessage(message, MessageStyle::Exclamation);
    txtGroupName.SetFocus();
    return false;
  };
  return session_.Trap(Context::kValidate, false, [&] {
    const String name(Trim(txtGroupName.Text()));
    if (name.empty()) return refuse(u"Please enter the Group Name.");
    // Local groups are not stored here, so nothing is known of their names.
    if (IsShared() && store_.IsNameTaken(name, Mode)) {
      return refuse(u"A group with that name already exists. Please use a different group name.");
    }
    return true;
  });
}

bool frmGroupsNew::MembersMayBeReplaced() {
  if (members_.IsComplete()) return true;
  session_.ShowMessage(
      members_.IsLoading()
          ? StringView(u"The members of the group are still being loaded. Please wait.")
          : StringView(u"The members of the group could not be loaded. Saving now would remove "
                       u"them from the group."),
      MessageStyle::Exclamation);
  return false;
}

bool frmGroupsNew::Save_Data() {
  String recipient;
  const bool saved = session_.Trap(Context::kSave, false, [&] {
    if (IsPicker()) {
      JobProgress progress(lblSave, pbrSave, u"Selecting members..", members_.Count());
      PickRecipients(session_, commands_, vsfGroupContacts, chkIncudeCountryCode.Checked(),
                     progress, recipient);
    } else {
      SaveGroup();
    }
    return true;
  });
  if (!saved) {
    lblSave.SetCaption(IsPicker() ? u"The recipients could not be selected."
                                  : u"The group could not be saved.");
    lblSave.SetVisible(true);
    if (!recipient.empty()) {
      session_.ShowMessage(recipient +
                               u" could not be selected as a recipient. Remove it from the "
                               u"list, or try again.",
                           MessageStyle::Exclamation);
    }
  }
  return saved;
}

void frmGroupsNew::SaveGroup() {
  const String name(Trim(txtGroupName.Text()));
  if (IsShared()) {
    if (Mode == ModeOfOperation::Add) {
      store_.Create(name, FolderId);
      groupId_ = session_.GroupId;
      // When a later statement fails, the next OK goes on with the group that is there now.
      Mode = ModeOfOperation::Modify;
    } else {
      store_.Rename(name);
    }
    JobProgress progress(lblSave, pbrSave, u"Saving Group...", members_.Count());
    store_.ReplaceMembers(vsfGroupContacts, progress);
  }
  session_.GroupName = name;
}

void frmGroupsNew::ClearResults() {
  session_.ContactsName.clear();
  if (IsPicker()) return;
  session_.GroupId.clear();
  session_.GroupName.clear();
}

}  // namespace ktrv::forms
