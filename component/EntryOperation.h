#pragma once

#include "component/Session.h"

namespace ktrv {

/// What tells one entry operation from the others in the guard and the rights check that all of
/// them begin with.
struct EntryOperation {
  StringView Name;
  StringView NotInitialised;  ///< log line when Init did not succeed before
  StringView Context;         ///< context text of its error records
  /// What becomes shared for an administrator at the server.
  enum class Shared { Nothing, Contacts, Group } ForAdministrator = Shared::Nothing;
  /// Whether a general user gets local groups whatever the host asked for.
  bool LocalGroupForGeneralUser = false;
  /// Whether the connection stays open when the user is refused.
  bool KeepsConnection = false;
};

/// The seven operations. Hosts' log readers match the texts literally, so their irregular blanks
/// stay, and so does the line about editing a group that three others log as well.
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

/// Whether Init succeeded; when not, the user is told and the operation's line logged.
bool CheckInitialised(Session& session, const EntryOperation& operation);

/// Whether Session::SessionUserId may work, after setting IsAdmin and what the operation gives
/// an administrator or a general user. A refused user is told. Leaves the connection open, but for
/// most refusals. \throws Error when the database cannot be asked.
bool CheckRights(Session& session, const EntryOperation& operation);

}  // namespace ktrv
