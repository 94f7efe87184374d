#include "component/EntryOperation.h"

#include "data/UserQueries.h"
#include "database/Recordset.h"

namespace ktrv {
namespace {

std::optional<double> NumberOf(const Variant& admin) {
  if (const bool* flag = std::get_if<bool>(&admin)) return *flag ? 1 : 0;
  return ParseNumber(Trim(ToText(admin)));
}

/// Stores the rights from the user's row. An ADMIN other than 1 or 0 changes nothing.
void TakeAdmin(Session& session, const EntryOperation& operation, const Variant& admin) {
  const auto value = NumberOf(admin);
  if (value == 1) session.IsAdmin = UserType::Administrator;
  if (value == 0) {
    session.IsAdmin = UserType::GeneralUser;
    if (operation.LocalGroupForGeneralUser) {
      session.GroupType = TypeOfGroup::LocalGroup;
    }
  }
}

void RefuseUser(Session& session, const EntryOperation& operation) {
  session.Services.ShowMessage(u"User has been either deleted or disabled", MessageStyle::Critical);
  session.Services.WriteLog(u"KTRVAddressBook: User has been either deleted or disabled.");
  if (!operation.KeepsConnection) session.Database.Close();
}

}  // namespace

bool CheckInitialised(Session& session, const EntryOperation& operation) {
  if (session.InitDone != 0) return true;
  session.Services.ShowMessage(u"Initialisation routine for AddressBook DLL has not been done.",
                               MessageStyle::Critical);
  session.Services.WriteLog(operation.NotInitialised);
  return false;
}

bool CheckRights(Session& session, const EntryOperation& operation) {
  database::Recordset users(session.Database.Environment);
  users.Open(data::UserQueries::Rights(session.SessionUserId), session.Database.Open());
  if (users.EndOfFile()) {
    users.Close();
    RefuseUser(session, operation);
    return false;
  }
  TakeAdmin(session, operation, users.Field(u"ADMIN"));
  users.Close();
  if (session.IsAdministrator() && session.IsAtServer()) {
    using Shared = EntryOperation::Shared;
    if (operation.ForAdministrator == Shared::Contacts) {
      session.SharedMode = TypeOfContact::SharedContact;
    }
    if (operation.ForAdministrator == Shared::Group) session.GroupType = TypeOfGroup::SharedGroup;
  }
  return true;
}

}  // namespace ktrv
