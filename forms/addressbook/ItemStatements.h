#pragma once

#include "database/Recordset.h"
#include "database/Transaction.h"
#include "services/BookDatabase.h"

namespace ktrv::forms {

/// Writes the address book window's own changes. What is deleted goes one statement at a time: when
/// one fails, those before it stay done. When the link is lost or memory is short, all that belongs
/// together stays, where the engine has transactions. Each opens the connection when it is not
/// open. All throw Error, and never send an id that is not decimal digits.
class ItemStatements {
 public:
  explicit ItemStatements(BookDatabase& database) : database_(database) {}

  /// Whether the group is there now. \param connection not the window's, as in InsertMember
  bool GroupIsThere(database::Connection& connection, StringView groupId);
  enum class Membership { Made, GroupIsGone, ContactIsGone };
  /// Makes the contact a member, provided that both are there and it is none.
  Membership InsertMember(database::Connection& connection, StringView groupId,
                          StringView contactId);
  /// With its memberships. Its members stay.
  void DeleteGroup(StringView groupId);
  /// With the contacts in it, whose memberships stay.
  /// \return false when groups are in it: nothing is deleted then
  bool DeleteSharedFolder(StringView folderId);
  /// The mapping only.
  void DeleteRemoteFolder(StringView folderId);
  /// With its memberships in all groups.
  void DeleteContact(StringView contactId);

  /// Whether a group is in the shared folder now, shown in the tree or not.
  bool HoldsGroups(StringView folderId);
  /// Name of the group; nothing when it is gone.
  std::optional<String> GroupName(StringView groupId);

 private:
  bool IsThere(database::Connection& connection, const String& query);
  void DeleteBoth(database::Transaction& transaction, const String& first, const String& second);
  void Execute(const String& statement);
  database::Recordset Read(const String& query);

  BookDatabase& database_;
};

}  // namespace ktrv::forms
