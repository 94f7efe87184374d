#include "forms/groups/GroupCommands.h"

#include <utility>

#include "data/GroupQueries.h"

namespace ktrv::forms {
namespace {

using database::DataType;
using database::Parameter;
namespace Queries = data::GroupQueries;

struct CommandText {
  StringView Text;
  std::vector<Parameter> Parameters;
};

Parameter Number(StringView name) {
  return {String(name), DataType::Integer, 0};
}

Parameter NarrowText(StringView name, std::int64_t size) {
  return {String(name), DataType::VarChar, size};
}

/// In the order of GroupCommand. \param narrow whether the host's dialect asks for narrow texts.
/// Only the name of a new group follows it; every other text is narrow always, as the servers that
/// the commands were tuned for index their columns.
std::array<CommandText, GroupCommands::kCount> Texts(bool narrow) {
  const Parameter newName{u"NAME", narrow ? DataType::VarChar : DataType::VarWChar, 100};
  return {{
      {Queries::kFolder, {NarrowText(u"ID", 100)}},
      {Queries::kFolders, {}},
      {Queries::kCountMembers, {Number(u"GROUP_ID")}},
      {Queries::kCountFolderGroups, {Number(u"ID")}},
      {Queries::kGroupIdByName, {NarrowText(u"NAME", 100)}},
      {Queries::kInsertGroup, {newName, Number(u"FOLDER_ID")}},
      {Queries::kRenameGroup, {NarrowText(u"NAME", 100), Number(u"ID")}},
      {Queries::kClearMembers, {Number(u"GROUP_ID")}},
      {Queries::kNameTaken, {NarrowText(u"NAME", 100)}},
      {Queries::kCountFolderContacts, {Number(u"FOLDER_ID")}},
      {Queries::kCountRemoteContacts, {Number(u"FOLDER_ID")}},
      {Queries::kNameTakenByAnother, {NarrowText(u"NAME", 100), Number(u"ID")}},
      {Queries::kInsertMember,
       {Number(u"GROUP_ID"), NarrowText(u"CONTACT_ID", 50), NarrowText(u"CONTACT_TYPE", 1)}},
      {Queries::kContact, {Number(u"ID")}},
      {Queries::kExpandedMembers, {Number(u"GROUP_ID_1"), Number(u"GROUP_ID_2")}},
  }};
}

}  // namespace

GroupCommands::GroupCommands(Session& session) : session_(session) {}

void GroupCommands::Init() {
  if (Is(session_.GroupType, TypeOfGroup::SharedGroup)) session_.OpenConnection();
  auto texts = Texts(data::WantsNarrowText(session_.DbType));
  for (std::size_t index = 0; index < kCount; ++index) {
    database::Command command;
    command.SetActiveConnection(session_.SessionConnection.get());
    command.SetCommandText(String(texts[index].Text));
    command.Prepared = true;
    for (Parameter& parameter : texts[index].Parameters) {
      command.Append(std::move(parameter.Name), parameter.Type, parameter.Size);
    }
    commands_[index] = std::move(command);
  }
}

database::Recordset GroupCommands::Execute(GroupCommand name, std::vector<Variant> values) {
  // The connection may have been closed, or replaced by the host, since the dialog was loaded.
  database::Connection& connection = session_.OpenConnection();
  database::Command& command = Get(name);
  if (command.ActiveConnection() != &connection) command.SetActiveConnection(&connection);
  return command.Execute(std::move(values));
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
