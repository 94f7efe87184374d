#include "forms/addressbook/ItemStatements.h"

#include "data/EditorQueries.h"
#include "data/ItemQueries.h"
#include "database/Recordset.h"

namespace ktrv::forms {

namespace Queries = data::ItemQueries;

void ItemStatements::InsertMember(StringView groupId, StringView contactId) {
  Execute(Queries::InsertMember(groupId, contactId));
}

void ItemStatements::DeleteGroup(StringView groupId) {
  Execute(Queries::DeleteGroup(groupId));
  Execute(Queries::DeleteMembers(groupId));
}

void ItemStatements::DeleteSharedFolder(StringView folderId) {
  Execute(Queries::DeleteFolderContacts(folderId));
  Execute(Queries::DeleteFolder(folderId));
}

void ItemStatements::DeleteRemoteFolder(StringView folderId) {
  Execute(Queries::DeleteFolder(folderId));
}

void ItemStatements::DeleteContact(StringView contactId) {
  Execute(Queries::DeleteContact(contactId));
  Execute(Queries::DeleteMemberships(contactId));
}

std::optional<String> ItemStatements::GroupName(StringView groupId) {
  database::Recordset groups(session_.Environment);
  groups.Open(data::EditorQueries::GroupName(groupId), session_.OpenConnection());
  if (groups.EndOfFile()) return std::nullopt;
  return ToText(groups.Field(u"NAME"));
}

void ItemStatements::Execute(const String& statement) {
  database::Connection& connection = session_.OpenConnection();
  try {
    connection.Execute(statement);
  } catch (...) {
    // The server may have dropped the link while the window stood open: the next use of the
    // connection opens a new one.
    session_.CloseConnection();
    throw;
  }
}

}  // namespace ktrv::forms
