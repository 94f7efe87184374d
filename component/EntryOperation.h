#pragma once

#include "component/Session.h"

namespace ktrv {

/// The parameters in which one entry operation differs from the others in the common guard and
/// rights check.
struct EntryOperation {
  StringView Name;
  StringView NotInitialised;  ///< logged when Init has not succeeded
  StringView Context;         ///< context text of its error records
  /// What becomes shared for an administrator at the server.
  enum class Shared { Nothing, Contacts, Group } ForAdministrator = Shared::Nothing;
  /// Whether a general user gets local groups, overriding the host's argument.
  bool LocalGroupForGeneralUser = false;
  /// Whether the connection stays open when the user is refused.
  bool KeepsConnection = false;
};

/// The seven operations. Log readers of hosts match these texts literally. So their irregular
/// blanks stay, and three other operations log the line about editing a group.
namespace EntryOperations {

inline constexpr StringView kNoEditGroup =
    u"KTRVAddressBook: Could not load edit group because initialisation routine not completed....";

inline constexpr EntryOperation kEditContacts{
    .Name = u"EditContacts",
    .NotInitialised =
        u"KTRVAddressBook: Could not load edit contacts because initialisation "
        u"routine not completed....",
    .Context = u"KTRVAddressBook: Error occured. Sub: EditContacts, Module: clsMain",
    .KeepsConnection = true,
};
inline constexpr EntryOperation kAddContacts{
    .Name = u"AddContacts",
    .NotInitialised =
        u"KTRVAddressBook: Could not load add contacts because initialisation "
        u"routine not completed....",
    .Context = u"KTRVAddressBook:  Error occured. Sub: AddContacts, Module: clsMain",
    .ForAdministrator = EntryOperation::Shared::Contacts,
};
inline constexpr EntryOperation kAddGroup{
    .Name = u"AddGroup",
    .NotInitialised =
        u"KTRVAddressBook: Could not load add group because initialisation routine "
        u"not completed....",
    .Context = u"KTRVAddressBook:  Error occured. Sub: AddGroup, Module: clsMain",
    .ForAdministrator = EntryOperation::Shared::Group,
    .LocalGroupForGeneralUser = true,
};
inline constexpr EntryOperation kEditGroup{
    .Name = u"EditGroup",
    .NotInitialised = kNoEditGroup,
    .Context = u"KTRVAddressBook:  Error occured. Sub: EditGroup, Module: clsMain",
    .ForAdministrator = EntryOperation::Shared::Group,
};
inline constexpr EntryOperation kLoadAddressBook{
    .Name = u"LoadAddressBook",
    .NotInitialised = kNoEditGroup,
    .Context = u"KTRVAddressBook: Error occured. Sub: LoadAddressbook, Module: clsMain",
    .ForAdministrator = EntryOperation::Shared::Contacts,
};
inline constexpr EntryOperation kLoadRecipients{
    .Name = u"LoadRecipients",
    .NotInitialised = kNoEditGroup,
    .Context = u"KTRVAddressBook: Error occured. Sub: LoadRecipients, Module: clsMain",
};
inline constexpr EntryOperation kLoadFolders{
    .Name = u"LoadFolders",
    .NotInitialised = kNoEditGroup,
    .Context = u"KTRVAddressBook: Error occured. Sub: LoadFolders, Module: clsMain",
};

}  // namespace EntryOperations

/// \return whether Init succeeded; if not, shows a message and logs the operation's line
bool CheckInitialised(Session& session, const EntryOperation& operation);

/// Checks Session::SessionUserId in the database and sets IsAdmin and the operation's sharing mode.
/// A refused user gets a message. The connection stays open, except after a refusal without
/// KeepsConnection. \throws Error when the query fails
bool CheckRights(Session& session, const EntryOperation& operation);

}  // namespace ktrv
