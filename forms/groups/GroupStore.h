#pragma once

#include "component/Session.h"
#include "controls/FlexGrid.h"
#include "forms/groups/GroupCommands.h"

namespace ktrv::forms {

class JobProgress;

/// Writes the session's group and its memberships, one statement after the other without a
/// transaction. All throw Error.
class GroupStore {
 public:
  /// Both must outlive the store.
  GroupStore(Session& session, GroupCommands& commands);

  /// Whether a group has the name; in Modify another one than the session's. The database compares.
  bool IsNameTaken(const String& name, ModeOfOperation mode);

  /// Inserts the group; its id becomes the session's group id.
  void Create(const String& name, const String& folderId);

  /// \throws Error RowChanged when the group is no longer there.
  void Rename(const String& name);

  /// Replaces all memberships by the rows of the grid.
  void ReplaceMembers(controls::FlexGrid& members, JobProgress& progress);

 private:
  Session& session_;
  GroupCommands& commands_;
};

}  // namespace ktrv::forms
