#include <algorithm>

#include "forms/Messages.h"
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

/// Of the question whether another user's changes may be replaced, and others with a safe answer.
constexpr std::int32_t kYesOrNo =
    MessageStyle::YesNo | MessageStyle::Question | MessageStyle::DefaultButton2;

/// The names with commas between them; of many, the first ones and how many more there are.
String Listed(const std::vector<String>& names) {
  constexpr std::size_t kMost = 5;
  String text;
  for (std::size_t index = 0; index < std::min(names.size(), kMost); ++index) {
    if (index > 0) text += u", ";
    text += names[index];
  }
  if (names.size() <= kMost) return text;
  return text + u" and " + ToDecimal(static_cast<std::int64_t>(names.size() - kMost)) + u" more";
}

}  // namespace

void frmGroupsNew::cmdOK_Click() {
  const controls::Form::Stay stay(*this);
  // Nobody wanted to pick from lists that were not there.
  if (ConnectAgain() && IsPicker() && members_.Count() == 0) return;
  if (store_.IsCreationOpen() && !FindCreatedGroup()) return;
  if (!Validate_Data()) return;
  if (!IsPicker() && IsShared() && !MembersMayBeReplaced()) return;
  if (Save_Data()) Unload();
}

void frmGroupsNew::cmdCancel_Click() {
  if (Form_MayClose()) Unload();
}

bool frmGroupsNew::Form_MayClose() {
  const controls::Form::Stay stay(*this);
  if (store_.IsCreationOpen()) FindCreatedGroup();
  if (!store_.IsIncomplete()) return true;
  const bool close = place_.Services.ShowMessage(
                         u"The stored group is incomplete. Do you want to close the window and "
                         u"leave it so?",
                         kYesOrNo) == MessageAnswer::Yes;
  return close && IsLoaded();
}

bool frmGroupsNew::FindCreatedGroup() {
  const bool looked = place_.Services.Trap(Context::kSave, false, [&] {
    if (store_.FindCreated()) TakeCreatedGroup();
    return true;
  });
  if (!looked) ShowNotSaved();
  return looked;
}

bool frmGroupsNew::Validate_Data() {
  if (IsPicker()) return true;
  const auto refuse = [&](StringView message) {
    place_.Services.ShowMessage(message, MessageStyle::Exclamation);
    txtGroupName.SetFocus();
    return false;
  };
  return place_.Services.Trap(Context::kValidate, false, [&] {
    const String name(Trim(txtGroupName.Text()));
    if (name.empty()) return refuse(u"Please enter the Group Name.");
    // Local groups are not stored here, so nothing is known of their names.
    if (IsShared() && store_.IsNameTaken(name, request_.Mode)) {
      return refuse(u"A group with that name already exists. Please use a different group name.");
    }
    return true;
  });
}

bool frmGroupsNew::MembersMayBeReplaced() {
  if (members_.IsComplete()) return true;
  place_.Services.ShowMessage(
      members_.IsLoading()
          ? StringView(u"The members of the group are still being loaded. Please wait.")
          : StringView(u"The members of the group could not be loaded. Saving now would remove "
                       u"them from the group."),
      MessageStyle::Exclamation);
  // The next OK may find them.
  if (!members_.IsLoading() && IsLoaded()) LoadMembers();
  return false;
}

String frmGroupsNew::Hindrance() {
  const auto tooLong = GroupStore::TooLong(vsfGroupContacts);
  if (!tooLong.empty()) {
    return u"The codes of these members are too long for a group: " + Listed(tooLong) +
           u". Please remove them from the list.";
  }
  const auto missing = store_.Missing(vsfGroupContacts);
  if (!missing.empty()) {
    return u"These members do not exist any more: " + Listed(missing) +
           u". Please remove them from the list.";
  }
  if (request_.Mode != ModeOfOperation::Add) return {};
  switch (store_.LookAtFolder(request_.FolderId)) {
    case GroupStore::Place::Fit:
      break;
    case GroupStore::Place::Remote:
      return String(Messages::kNoGroupInRemoteFolder);
    case GroupStore::Place::Gone:
      return String(Messages::kPlaceIsGone);
  }
  return {};
}

bool frmGroupsNew::ChangesMayBeReplaced() {
  const bool replace = place_.Services.ShowMessage(
                           u"Another user has changed this group since it was opened. Do you want "
                           u"to replace the changes?",
                           kYesOrNo) == MessageAnswer::Yes;
  if (!replace || !IsLoaded()) return false;
  store_.TakeAsKnown();
  return true;
}

void frmGroupsNew::Refuse(const String& message) {
  place_.Services.ShowMessage(message, MessageStyle::Exclamation);
  throw Error(ErrorNumber::RowChanged, message);
}

void frmGroupsNew::ShowNotSaved() {
  lblSave.SetCaption(IsPicker()              ? u"The recipients could not be selected."
                     : store_.IsIncomplete() ? u"The stored group is incomplete. OK tries again."
                                             : u"The group could not be saved.");
  lblSave.SetVisible(true);
}

bool frmGroupsNew::Save_Data() {
  String recipient;
  bool wanted = true;
  const bool worked = place_.Services.Trap(Context::kSave, false, [&] {
    if (IsPicker()) {
      JobProgress progress(lblSave, pbrSave, u"Selecting members..", members_.Count());
      picked_ = PickRecipients(commands_, vsfGroupContacts,
                               {request_.ExpandGroups, chkIncudeCountryCode.Checked()}, progress,
                               recipient);
    } else {
      wanted = SaveGroup();
    }
    return true;
  });
  if (!worked) {
    ShowNotSaved();
    if (!recipient.empty()) {
      place_.Services.ShowMessage(recipient +
                                      u" could not be selected as a recipient. Remove it from the "
                                      u"list, or try again.",
                                  MessageStyle::Exclamation);
    }
  }
  return worked && wanted;
}

bool frmGroupsNew::SaveGroup() {
  const String name(Trim(txtGroupName.Text()));
  while (IsShared()) {
    const Attempt attempt = Write(name);
    if (attempt.Written) break;
    if (!attempt.Hindrance.empty()) Refuse(attempt.Hindrance);
    if (!ChangesMayBeReplaced()) return false;
  }
  saved_ = {store_.GroupId(), name};
  return true;
}

frmGroupsNew::Attempt frmGroupsNew::Write(const String& name) {
  // Whatever can be refused is looked at before the first statement that writes, where others
  // cannot come between. The user is asked when the locks are gone.
  GroupStore::Saving saving(store_, place_.Database.Open());
  if (const String hindrance = Hindrance(); !hindrance.empty()) return {false, hindrance};
  if (request_.Mode == ModeOfOperation::Modify) {
    const auto now = store_.LookAgain();
    if (now == GroupStore::Now::Gone) return {false, String(Messages::kPlaceIsGone)};
    if (now == GroupStore::Now::Changed) return {};
  }
  try {
    if (request_.Mode == ModeOfOperation::Add) {
      store_.Create(name, request_.FolderId);
    } else {
      store_.Rename(name);
    }
    JobProgress progress(lblSave, pbrSave, u"Saving Group...", members_.Count());
    store_.ReplaceMembers(vsfGroupContacts, progress);
    saving.Finish();
  } catch (const Error&) {
    saving.Fail();
    TakeCreatedGroup();
    throw;
  } catch (...) {
    saving.Undo();
    TakeCreatedGroup();
    throw;
  }
  TakeCreatedGroup();
  return {true, {}};
}

void frmGroupsNew::TakeCreatedGroup() {
  // When a later statement failed, the next OK goes on with the group that is there now.
  if (!store_.GroupId().empty()) request_.Mode = ModeOfOperation::Modify;
}

}  // namespace ktrv::forms
