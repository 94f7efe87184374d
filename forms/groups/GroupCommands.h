#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "database/Command.h"
#include "services/BookDatabase.h"

namespace ktrv::forms {

/// What the group dialog asks of the database besides its lists.
enum class GroupCommand : std::size_t {
  Folder,
  Folders,
  CountMembers,
  CountFolderGroups,
  GroupIdByName,
  InsertGroup,
  RenameGroup,
  ClearMembers,
  NameTaken,
  CountFolderContacts,
  CountRemoteContacts,
  NameTakenByAnother,
  InsertMember,
  Contact,
  ExpandedMembers,
  Group,
  Memberships,
  ContactsAmong,
  RemoteContactsAmong,
};

/// The prepared commands of the group dialog. Each is given to the engine when it is first
/// executed, so a text that the engine refuses fails only where it is used.
class GroupCommands {
 public:
  static constexpr std::size_t kCount = 19;
  /// How many ids ContactsAmong and RemoteContactsAmong take: few enough for every engine.
  static constexpr std::size_t kAmong = 100;

  /// \param database must outlive the commands.
  explicit GroupCommands(BookDatabase& database) : database_(database) {}

  void Init();

  /// Runs the command with one value for each parameter, on the connection, opened when it is
  /// closed. \throws Error as database::Command::Execute.
  database::Recordset Execute(GroupCommand command, std::vector<Variant> values = {});

  /// The first column of the first row of a counting command; 0 without a row.
  std::int64_t Count(GroupCommand command, const Variant& value);

  /// Rows changed by the command's last run; -1 when the driver cannot tell.
  std::int64_t RecordsAffected(GroupCommand command) const;

  const database::Command& At(GroupCommand command) const;

 private:
  database::Command& Get(GroupCommand command);

  BookDatabase& database_;
  std::array<database::Command, kCount> commands_;
};

}  // namespace ktrv::forms
