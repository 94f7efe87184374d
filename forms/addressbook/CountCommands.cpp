#include "forms/addressbook/CountCommands.h"

#include "data/AddressBookQueries.h"

namespace ktrv::forms {
namespace {

namespace Queries = data::AddressBookQueries;

void Set(database::Command& command, StringView text, String parameter,
         database::Connection& connection) {
  command.SetActiveConnection(&connection);
  command.SetCommandText(String(text));
  command.Prepared = true;
  command.Append(std::move(parameter), database::DataType::Integer, 0);
}

}  // namespace

void CountCommands::Prepare() {
  database::Connection& connection = database_.Open();
  commands_.emplace();
  Set(commands_->FolderContacts, Queries::kCountFolderContacts, u"FOLDER_ID", connection);
  Set(commands_->RemoteContacts, Queries::kCountRemoteContacts, u"FOLDER_ID", connection);
  Set(commands_->FolderGroups, Queries::kCountFolderGroups, u"FOLDER_ID", connection);
  Set(commands_->GroupMembers, Queries::kCountGroupMembers, u"GROUP_ID", connection);
}

std::int32_t CountCommands::FolderContacts(std::int32_t folderId) {
  return Count(&Commands::FolderContacts, folderId);
}

std::int32_t CountCommands::RemoteContacts(std::int32_t folderId) {
  return Count(&Commands::RemoteContacts, folderId);
}

std::int32_t CountCommands::FolderGroups(std::int32_t folderId) {
  return Count(&Commands::FolderGroups, folderId);
}

std::int32_t CountCommands::GroupMembers(std::int32_t groupId) {
  return Count(&Commands::GroupMembers, groupId);
}

std::int32_t CountCommands::Count(database::Command Commands::*which, std::int32_t id) {
  if (!commands_) Prepare();
  database_.Open();
  try {
    const database::Recordset result = ((*commands_).*which).Execute({std::int64_t{id}});
    if (result.EndOfFile() || result.BeginningOfFile()) return 0;
    return static_cast<std::int32_t>(ToInteger(result.Field(u"TOTALRECORDS")));
  } catch (...) {
    // The server may have dropped the link while the window stood open: the next use of the
    // connection opens a new one.
    database_.Close();
    throw;
  }
}

}  // namespace ktrv::forms
