#pragma once

#include "database/Recordset.h"
#include "database/Transaction.h"
#include "services/BookDatabase.h"

namespace ktrv::forms {

/// The statements of the address book's own commands. Those without a connection parameter open the
/// window's connection if necessary. Statements that belong together run in a transaction: if the
/// second one fails, the first one is still committed. If the link is lost or memory is exhausted,
/// both are rolled back, on engines with transactions. All throw Error, and reject ids that are not
/// decimal digits.
class ItemStatements {
 public:
  explicit ItemStatements(BookDatabase& database) : database_(database) {}

  /// Locks the group until the end of the caller's transaction, whose first statement this must be:
  /// on some engines the others see what was stored before their first one.
  /// \return whether the group exists
  bool LockGroup(database::Connection& connection, StringView groupId);
  enum class Membership { Made, Present, GroupIsGone, ContactIsGone };
  /// Makes the contact a member of the group, if both exist and it is not a member yet. Locks the
  /// group.
  Membership InsertMember(database::Connection& connection, StringView groupId,
                          StringView contactId);
  /// The same in a transaction of its own.
  Membership AddMember(StringView groupId, StringView contactId);
  /// Deletes the group and its memberships, not its members.
  void DeleteGroup(StringView groupId);
  /// Deletes the folder and its contacts, not their memberships.
  /// \return false if the folder has groups; nothing is deleted then
  bool DeleteSharedFolder(StringView folderId);
  /// Deletes the mapping only.
  void DeleteRemoteFolder(StringView folderId);
  /// Deletes the contact and its memberships in all groups.
  void DeleteContact(StringView contactId);

  /// Queries whether the shared folder has groups.
  bool HoldsGroups(StringView folderId);
  /// The name of the group; nullopt if it no longer exists.
  std::optional<String> GroupName(StringView groupId);

 private:
  bool IsThere(database::Connection& connection, const String& query);
  void DeleteBoth(database::Transaction& transaction, const String& first, const String& second);
  void Execute(const String& statement);
  database::Recordset Read(const String& query);

  BookDatabase& database_;
};

}  // namespace ktrv::forms
