#pragma once

#include "controls/Form.h"
#include "forms/groups/GroupRequest.h"
#include "forms/groups/GroupStore.h"
#include "forms/groups/JobProgress.h"
#include "services/Workplace.h"

namespace ktrv::forms {

/// What OK does with a group that the database holds: looks for what is in the way, asks before
/// another user's changes are replaced, and writes.
class GroupSaving {
 public:
  struct Display {
    const controls::Form& Dialog;
    controls::FlexGrid& Members;
    JobProgress::Display Progress;
  };

  /// All must outlive it. \param request becomes one to modify once a new group is in the database.
  GroupSaving(Workplace& place, GroupRequest& request, GroupStore& store, Display display);

  /// \return false when the user does not want what is there to be replaced. \throws Error; when
  /// something is in the way, after the user was told; Stopped when the user ended it
  bool Save(const String& name);
  /// Looks what became of an insert whose outcome is unknown. \throws Error
  void FindCreated();

 private:
  struct Attempt {
    bool Written = false;
    String Hindrance;  ///< why not; empty when another user has changed the group
  };
  /// Looks and writes, in one transaction where there is one. \throws Error, Stopped
  Attempt Write(const String& name);
  /// What the user is to be told instead of saving; empty when nothing is in the way.
  String Hindrance(JobProgress& progress);
  void TakeCreatedGroup();
  bool ChangesMayBeReplaced();
  /// Tells the user. \throws Error with the same text, for the log
  [[noreturn]] void Refuse(const String& message);

  Workplace& place_;
  GroupRequest& request_;
  GroupStore& store_;
  Display display_;
};

}  // namespace ktrv::forms
