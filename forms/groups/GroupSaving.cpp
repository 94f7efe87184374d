#include "forms/groups/GroupSaving.h"

#include "forms/Messages.h"
#include "forms/groups/NameList.h"

namespace ktrv::forms {

GroupSaving::GroupSaving(Workplace& place, GroupRequest& request, GroupStore& store,
                         Display display)
    : place_(place), request_(request), store_(store), display_(display) {}

bool GroupSaving::Save(const String& name) {
  for (;;) {
    const Attempt attempt = Write(name);
    if (attempt.Written) return true;
    if (!attempt.Hindrance.empty()) Refuse(attempt.Hindrance);
    if (!ChangesMayBeReplaced()) return false;
  }
}

void GroupSaving::FindCreated() {
  if (store_.FindCreated()) TakeCreatedGroup();
}

GroupSaving::Attempt GroupSaving::Write(const String& name) {
  JobProgress progress(display_.Progress, u"Saving Group...", display_.Members.Rows() - 1);
  // All checks come before the first write, in the same transaction. The user is asked after the
  // locks are released.
  GroupStore::Saving saving(store_, place_.Database.Open());
  if (const String hindrance = Hindrance(progress); !hindrance.empty()) return {false, hindrance};
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
    store_.ReplaceMembers(display_.Members, progress);
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

String GroupSaving::Hindrance(JobProgress& progress) {
  const auto tooLong = GroupStore::TooLong(display_.Members);
  if (!tooLong.empty()) {
    return u"The codes of these members are too long for a group: " + Listed(tooLong) +
           u". Please remove them from the list.";
  }
  const auto missing = store_.Missing(display_.Members, progress);
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

void GroupSaving::TakeCreatedGroup() {
  // If a later statement failed, the next OK continues with the existing group.
  if (!store_.GroupId().empty()) request_.Mode = ModeOfOperation::Modify;
}

bool GroupSaving::ChangesMayBeReplaced() {
  const bool replace = place_.Services.ShowMessage(
                           u"Another user has changed this group since it was opened. Do you want "
                           u"to replace the changes?",
                           Messages::kYesOrNo) == MessageAnswer::Yes;
  if (!replace || !display_.Dialog.IsLoaded()) return false;
  store_.TakeAsKnown();
  return true;
}

void GroupSaving::Refuse(const String& message) {
  place_.Services.ShowMessage(message, MessageStyle::Exclamation);
  throw Error(ErrorNumber::RowChanged, message);
}

}  // namespace ktrv::forms
