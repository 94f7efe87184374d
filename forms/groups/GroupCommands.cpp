#include "forms/groups/GroupCommands.h"

#include <utility>

#include "data/GroupQueries.h"

namespace ktrv::forms {
namespace {

using database::DataType;
using database::Parameter;
namespace Queries = data::GroupQueries;

struct CommandText {
  String Text;
  std::vector<Parameter> Parameters;
};

Parameter Number(StringView name) {
  return {String(name), DataType::Integer, 0};
}

Parameter NarrowText(StringView name, std::int64_t size) {
  return {String(name), DataType::VarChar, size};
}

std::vector<Parameter> Among(const Parameter& parameter) {
  return std::vector<Parameter>(GroupCommands::kAmong, parameter);
}

/// In the order of GroupCommand. \param narrow whether the host's dialect asks for narrow texts.
/// Only the name of a new group follows it; every other text is narrow always, as the servers that
/// the commands were tuned for index their columns.
std::array<CommandText, GroupCommands::kCount> Texts(bool narrow) {
  const Parameter newName{u"NAME", narrow ? DataType::VarChar : DataType::VarWChar, 100};
  const auto text = [](StringView query) { return String(query); };
  return {{
      {text(Queries::kFolder), {NarrowText(u"ID", 100)}},
      {text(Queries::kFolders), {}},
      {text(Queries::kCountMembers), {Number(u"GROUP_ID")}},
      {text(Queries::kCountFolderGroups), {Number(u"ID")}},
      {text(Queries::kGroupIdByName), {NarrowText(u"NAME", 100)}},
      {text(Queries::kInsertGroup), {newName, Number(u"FOLDER_ID")}},
      {text(Queries::kRenameGroup), {NarrowText(u"NAME", 100), Number(u"ID")}},
      {text(Queries::kClearMembers), {Number(u"GROUP_ID")}},
      {text(Queries::kNameTaken), {NarrowText(u"NAME", 100)}},
      {text(Queries::kCountFolderContacts), {Number(u"FOLDER_ID")}},
      {text(Queries::kCountRemoteContacts), {Number(u"FOLDER_ID")}},
      {text(Queries::kNameTakenByAnother), {NarrowText(u"NAME", 100), Number(u"ID")}},
      {text(Queries::kInsertMember),
       {Number(u"GROUP_ID"), NarrowText(u"CONTACT_ID", 50), NarrowText(u"CONTACT_TYPE", 1)}},
      {text(Queries::kContact), {Number(u"ID")}},
      {text(Queries::kExpandedMembers), {Number(u"GROUP_ID_1"), Number(u"GROUP_ID_2")}},
      {text(Queries::kGroup), {Number(u"ID")}},
      {text(Queries::kMemberships), {Number(u"GROUP_ID")}},
      {Queries::ContactsAmong(GroupCommands::kAmong), Among(Number(u"ID"))},
      {Queries::RemoteContactsAmong(GroupCommands::kAmong), Among(NarrowText(u"CODE", 50))},
  }};
}

}  // namespace

void GroupCommands::Init() {
  auto texts = Texts(data::WantsNarrowText(database_.DbType));
  for (std::size_t index = 0; index < kCount; ++index) {
    database::Command command;
    command.SetActiveConnection(database_.Connection.get());
    command.SetCommandText(std::move(texts[index].Text));
    command.Prepared = true;
    for (Parameter& parameter : texts[index].Parameters) {
      command.Append(std::move(parameter.Name), parameter.Type, parameter.Size);
    }
    commands_[index] = std::move(command);
  }
}

database::Recordset GroupCommands::Execute(GroupCommand name, std::vector<Variant> values) {
  database_.Open();
  return Get(name).Execute(std::move(values));
}

std::int64_t GroupCommands::Count(GroupCommand command, const Variant& value) {
  const database::Recordset rows = Execute(command, {value});
  return rows.EndOfFile() ? 0 : ToInteger(rows.Field(rows.Columns().front().Name));
}

std::int64_t GroupCommands::RecordsAffected(GroupCommand command) const {
  return At(command).RecordsAffected();
}

const database::Command& GroupCommands::At(GroupCommand command) const {
  return commands_[static_cast<std::size_t>(command)];
}

database::Command& GroupCommands::Get(GroupCommand command) {
  return commands_[static_cast<std::size_t>(command)];
}

}  // namespace ktrv::forms
