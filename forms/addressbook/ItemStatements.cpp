#include "forms/addressbook/ItemStatements.h"

#include "data/EditorQueries.h"
#include "data/GroupQueries.h"
#include "data/ItemQueries.h"

namespace ktrv::forms {

namespace Queries = data::ItemQueries;

bool ItemStatements::LockGroup(database::Connection& connection, StringView groupId) {
  connection.Execute(data::GroupQueries::LockGroup(groupId));
  return IsThere(connection, data::EditorQueries::GroupName(groupId));
}

ItemStatements::Membership ItemStatements::InsertMember(database::Connection& connection,
                                                        StringView groupId, StringView contactId) {
  // Two users could add the same contact at once, or a save of the group remove it unseen. Other
  // users may have deleted either of them meanwhile.
  if (!LockGroup(connection, groupId)) return Membership::GroupIsGone;
  if (!IsThere(connection, data::EditorQueries::ContactName(contactId))) {
    return Membership::ContactIsGone;
  }
  if (IsThere(connection, Queries::Membership(groupId, contactId))) return Membership::Present;
  connection.Execute(Queries::InsertMember(groupId, contactId));
  return Membership::Made;
}

ItemStatements::Membership ItemStatements::AddMember(StringView groupId, StringView contactId) {
  database::Connection& connection = database_.Open();
  try {
    database::Transaction transaction(connection);
    const Membership membership = InsertMember(connection, groupId, contactId);
    transaction.Commit();
    return membership;
  } catch (...) {
    database_.Close();  // as in Execute
    throw;
  }
}

bool ItemStatements::IsThere(database::Connection& connection, const String& query) {
  database::Recordset rows(database_.Environment);
  rows.Open(query, connection);
  return !rows.EndOfFile();
}

void ItemStatements::DeleteGroup(StringView groupId) {
  database::Transaction transaction(database_.Open());
  DeleteBoth(transaction, Queries::DeleteGroup(groupId), Queries::DeleteMembers(groupId));
}

bool ItemStatements::DeleteSharedFolder(StringView folderId) {
  database::Transaction transaction(database_.Open());
  if (HoldsGroups(folderId)) return false;
  DeleteBoth(transaction, Queries::DeleteFolderContacts(folderId), Queries::DeleteFolder(folderId));
  return true;
}

void ItemStatements::DeleteRemoteFolder(StringView folderId) {
  Execute(Queries::DeleteFolder(folderId));
}

void ItemStatements::DeleteContact(StringView contactId) {
  database::Transaction transaction(database_.Open());
  DeleteBoth(transaction, Queries::DeleteContact(contactId), Queries::DeleteMemberships(contactId));
}

void ItemStatements::DeleteBoth(database::Transaction& transaction, const String& first,
                                const String& second) {
  Execute(first);
  try {
    Execute(second);
  } catch (const Error&) {
    try {
      transaction.Commit();
    } catch (...) {  // report the first failure
    }
    throw;
  }
  transaction.Commit();
}

bool ItemStatements::HoldsGroups(StringView folderId) {
  return !Read(Queries::GroupsInFolder(folderId)).EndOfFile();
}

std::optional<String> ItemStatements::GroupName(StringView groupId) {
  const database::Recordset groups = Read(data::EditorQueries::GroupName(groupId));
  if (groups.EndOfFile()) return std::nullopt;
  return ToText(groups.Field(u"NAME"));
}

database::Recordset ItemStatements::Read(const String& query) {
  database::Connection& connection = database_.Open();
  database::Recordset rows(database_.Environment);
  try {
    rows.Open(query, connection);
  } catch (...) {
    database_.Close();  // as in Execute
    throw;
  }
  return rows;
}

void ItemStatements::Execute(const String& statement) {
  database::Connection& connection = database_.Open();
  try {
    connection.Execute(statement);
  } catch (...) {
    // The server may have closed the link. The next use opens a new one.
    database_.Close();
    throw;
  }
}

}  // namespace ktrv::forms
