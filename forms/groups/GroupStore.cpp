#include "forms/groups/GroupStore.h"

#include "forms/groups/ContactRow.h"
#include "forms/groups/JobProgress.h"

namespace ktrv::forms {

GroupStore::GroupStore(Session& session, GroupCommands& commands)
    : session_(session), commands_(commands) {}

bool GroupStore::IsNameTaken(const String& name, ModeOfOperation mode) {
  const auto rows =
      mode == ModeOfOperation::Add
          ? commands_.Execute(GroupCommand::NameTaken, {name})
          : commands_.Execute(GroupCommand::NameTakenByAnother, {name, session_.GroupId});
  return !rows.EndOfFile();
}

void GroupStore::Create(const String& name, const String& folderId) {
  commands_.Execute(GroupCommand::InsertGroup, {name, folderId});
  // Names are unique, so the row of this name is the one that was inserted.
  session_.GroupId = ToText(commands_.Execute(GroupCommand::GroupIdByName, {name}).Field(u"ID"));
}

void GroupStore::Rename(const String& name) {
  commands_.Execute(GroupCommand::RenameGroup, {name, session_.GroupId});
  if (commands_.RecordsAffected(GroupCommand::RenameGroup) != 0) return;
  // No row changed: some engines say so too when the name was the same already.
  const auto rows = commands_.Execute(GroupCommand::GroupIdByName, {name});
  if (!rows.EndOfFile() && ToText(rows.Field(u"ID")) == session_.GroupId) return;
  // Memberships written now would belong to no group.
  throw Error(ErrorNumber::RowChanged, u"The group was deleted by another user");
}

void GroupStore::ReplaceMembers(controls::FlexGrid& members, JobProgress& progress) {
  const ContactColumns columns(members);
  commands_.Execute(GroupCommand::ClearMembers, {session_.GroupId});
  String letter;
  for (int row = 1; row < members.Rows(); ++row) {
    progress.Advance();
    const String kind = members.Text(row, columns.Kind());
    if (kind == ContactKind::Contact) letter = u"S";
    if (kind == ContactKind::RemoteContact) letter = u"R";
    // A group is no valid member. It is stored with the letter of the row before it, which is what
    // readers of the table have always found.
    commands_.Execute(GroupCommand::InsertMember,
                      {session_.GroupId, members.Text(row, columns.Id()), letter});
  }
}

}  // namespace ktrv::forms
