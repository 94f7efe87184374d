#pragma once

#include "common/TextIndex.h"
#include "forms/groups/ContactRow.h"
#include "forms/groups/DialogList.h"
#include "forms/groups/GroupCommands.h"
#include "forms/groups/GroupStore.h"

namespace ktrv::forms {

class JobProgress;

/// The right list of the group dialog: members of a group, or picked recipients. Each id occurs at
/// most once, regardless of its kind: a contact excludes a group with the same id.
class MemberList final : public DialogList {
 public:
  /// All references must outlive the object.
  MemberList(Services& services, BookDatabase& database, GroupCommands& commands, GroupStore& store,
             Display display, controls::Label& count, controls::Label& leftOut);

  /// Clears the list; it is complete then.
  void Empty();
  /// Reads the group into the store and starts to load the list. Failures are logged and shown.
  void Load();
  /// Shows that the members could not be loaded.
  void Fail();
  /// Whether all members are in the list: false while loading and after a failure. Then the list
  /// must not be changed or saved, because missing members would be deleted.
  bool IsComplete() const { return state_ == State::Complete; }

  /// Appends rows of the other list whose ids are not in this one. Rows that are excluded by a row
  /// of another kind with the same id are named in a label until the next change. If the user
  /// cancels, the rows appended so far stay.
  void Take(controls::FlexGrid& source, const std::vector<int>& rows, JobProgress& progress);
  void RemoveSelected();

  int Count() const { return display_.Grid.Rows() - 1; }

 private:
  void Loaded() override;
  void RemoveStrangers();
  void ReadIds();
  void Remember(const String& id, const String& kind);
  void ShowCount(std::int64_t members);
  void ShowLeftOut(const std::vector<String>& names);

  GroupCommands& commands_;
  GroupStore& store_;
  controls::Label& count_;
  controls::Label& leftOut_;
  TextIndex ids_;              ///< the ids in the grid
  std::vector<String> kinds_;  ///< the kind of each id
};

}  // namespace ktrv::forms
