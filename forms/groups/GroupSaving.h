#pragma once

#include "controls/Form.h"
#include "forms/groups/GroupRequest.h"
#include "forms/groups/GroupStore.h"
#include "forms/groups/JobProgress.h"
#include "services/Workplace.h"

namespace ktrv::forms {

/// Saves a shared group: checks whether it can be saved, asks before replacing another user's
/// changes, and writes.
class GroupSaving {
 public:
  struct Display {
    const controls::Form& Dialog;
    controls::FlexGrid& Members;
    JobProgress::Display Progress;
  };

  /// All references must outlive the object. \param request its mode becomes Modify when a new
  /// group is stored
  GroupSaving(Workplace& place, GroupRequest& request, GroupStore& store, Display display);

  /// \return false if the user does not want to replace another user's changes. \throws Error, with
  /// a message before if the group cannot be saved; Stopped if the user cancels
  bool Save(const String& name);
  /// Checks whether a failed insert has stored the group after all. \throws Error
  void FindCreated();

 private:
  struct Attempt {
    bool Written = false;
    String Hindrance;  ///< reason for refusal; empty if another user has changed the group
  };
  /// Checks and writes in one transaction, if supported. \throws Error, Stopped
  Attempt Write(const String& name);
  /// The message that refuses to save; empty if nothing prevents saving.
  String Hindrance(JobProgress& progress);
  void TakeCreatedGroup();
  bool ChangesMayBeReplaced();
  /// Shows the message. \throws Error with the same text, for the log
  [[noreturn]] void Refuse(const String& message);

  Workplace& place_;
  GroupRequest& request_;
  GroupStore& store_;
  Display display_;
};

}  // namespace ktrv::forms
