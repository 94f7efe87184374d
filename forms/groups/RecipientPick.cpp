#include "forms/groups/RecipientPick.h"

#include "forms/groups/ContactRow.h"
#include "forms/groups/JobProgress.h"
#include "forms/groups/RecipientResult.h"

namespace ktrv::forms {
namespace {

constexpr StringView kSelecting = u"Selecting members..";

String TrimmedField(const database::Recordset& rows, StringView name) {
  return String(Trim(ToText(rows.Field(name))));
}

String Quoted(const String& name) {
  return u"\"" + name + u"\"";
}

void ExpandGroup(GroupCommands& commands, const ContactRow& group, RecipientResult& result,
                 JobProgress& progress, String& current) {
  const std::int64_t count = commands.Count(GroupCommand::CountMembers, group.Id);
  if (count <= 0) return;
  progress.Say(u"Exploring members for group - " + group.Name);
  progress.Extend(count);
  auto members = commands.Execute(GroupCommand::ExpandedMembers, {group.Id, group.Id});
  for (; !members.EndOfFile(); members.MoveNext()) {
    const ContactRow member{.Id = TrimmedField(members, u"ID"),
                            .Name = TrimmedField(members, u"FNAME"),
                            .MobileNo = TrimmedField(members, u"MOBILENO"),
                            .CountryCode = TrimmedField(members, u"COUNTRYCODE"),
                            .MobileDisplay = {},
                            .Kind = {}};
    current = Quoted(group.Name) + u" (its member " + Quoted(member.Name) + u")";
    result.AddGroupMember(member);
    progress.Advance();
  }
  progress.Say(kSelecting);
}

}  // namespace

Recipients PickRecipients(GroupCommands& commands, controls::FlexGrid& picked, PickOptions options,
                          JobProgress& progress, String& current) {
  const ContactColumns columns(picked);
  RecipientResult result(options.PrefixCountryCode, static_cast<std::size_t>(picked.Rows() - 1));
  for (int index = 1; index < picked.Rows(); ++index) {
    const ContactRow row = columns.Read(index);
    current = Quoted(row.Name);
    if (row.Kind == ContactKind::Contact) {
      result.AddContact(row);
    } else if (row.Kind == ContactKind::Group && options.ExpandGroups) {
      ExpandGroup(commands, row, result, progress, current);
    } else if (row.Kind == ContactKind::Group) {
      result.AddGroup(row);
    } else if (row.Kind == ContactKind::RemoteContact) {
      result.AddRemoteContact(row);
    }
    progress.Advance();
  }
  return std::move(result).Take();
}

}  // namespace ktrv::forms
