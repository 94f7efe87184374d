#pragma once

#include <array>
#include <deque>

#include "common/TextIndex.h"
#include "forms/groups/ContactRow.h"
#include "forms/groups/DialogList.h"
#include "forms/groups/GroupCommands.h"
#include "forms/groups/GroupStore.h"
#include "forms/groups/MemberHistory.h"

namespace ktrv::forms {

class JobProgress;

/// The right list of the group dialog: members of a group, or picked recipients. No row is added
/// whose id is there, regardless of its kind: a contact excludes a group with the same id.
class MemberList final : public DialogList {
 public:
  struct Labels {
    controls::Label& Count;
    controls::Label& LeftOut;  ///< who is excluded by another kind with the same id
    controls::Label& Outcome;  ///< what the last change did
  };
  /// All references must outlive the object.
  MemberList(Services& services, BookDatabase& database, GroupCommands& commands, GroupStore& store,
             Display display, Labels labels);

  /// Clears the list; it is complete then.
  void Empty();
  /// Reads the group into the store and starts to load the list. Failures are logged and shown.
  void Load();
  /// Shows that the members could not be loaded.
  void Fail();
  /// Whether all members are in the list: false while loading and after a failure. Then the list
  /// must not be changed or saved, because missing members would be deleted.
  bool IsComplete() const { return state_ == State::Complete; }

  bool HasFailed() const { return state_ == State::Failed; }

  // Changes: call them only if the list is complete. They raise Changed. If the user cancels a
  // removal or an undo, nothing is changed.

  /// Appends rows of the other list whose ids are not in this one. Rows that are excluded by a row
  /// of another kind with the same id are named in a label until the next change. If the user
  /// cancels, the rows appended so far stay.
  void Take(controls::FlexGrid& source, const std::vector<int>& rows, JobProgress& progress);
  /// The row that takes the place of the first selected one becomes current.
  void RemoveSelected(JobProgress& progress);
  void RemoveAll(JobProgress& progress);
  bool CanUndo() const { return !history_.IsEmpty(); }
  /// Takes back the last change. A removed row does not come back if the list has its kind
  /// and id.
  void Undo(JobProgress& progress);
  /// The contact was edited: undoing brings it back with these texts.
  void Edited(const ContactRow& contact) { history_.Update(contact); }

  /// Shows what a command did instead of changing the list.
  void Say(const String& outcome) { labels_.Outcome.SetCaption(outcome); }

  /// Sets how many rows are inserted or removed between two looks for input.
  void SetPortion(std::size_t rows) { portion_ = rows; }

  int Count() const { return display_.Grid.Rows() - 1; }
  /// Whether this contact or group is in the list; false if the list is not complete.
  bool Has(StringView kind, StringView id) const;

 private:
  static constexpr std::size_t kKinds = 4;  ///< contacts, groups, remote contacts and others
  struct Known {
    std::array<int, kKinds> Rows{};  ///< of each kind; a database without keys may return one twice
  };

  void Arrived() override;
  void Loaded() override { contacts_.Clear(); }
  void ForgetAll();
  /// The id's number, a new one if need be.
  std::size_t NumberOf(const String& id);
  /// The index of a kind in Known::Rows.
  static std::size_t IndexOf(StringView kind);
  /// Counts a row. Allocates nothing for an id that has a number.
  void Remember(const String& id, StringView kind);
  /// A row of the kind with this index and id was removed. Allocates nothing.
  void Forget(const String& id, std::size_t kind);
  /// Runs a change of the list. If it fails halfway, shows what is there, and rethrows.
  template <class Job>
  void Change(const Job& job);
  /// Changes the grid's rows and counts them, also if the grid fails after the change, for instance
  /// in an event.
  template <class Step, class Counting>
  void ChangeRows(const Step& step, const Counting& counting);
  void TakeRows(controls::FlexGrid& source, const std::vector<int>& rows, JobProgress& progress);
  void Remove(const controls::RowSelection& rows, JobProgress& progress);
  void RemoveAndNote(const controls::RowSelection& rows, JobProgress& progress);
  void UndoLast(JobProgress& progress);
  /// Removes the rows from the grid, in portions.
  void RemoveRows(const controls::RowSelection& rows, JobProgress& progress);
  /// Suspends painting of the grid during the result's lifetime.
  [[nodiscard]] auto WithoutPainting();
  // \return what was done, for the user. \throws Stopped
  String RemoveAdded(const std::vector<String>& ids, JobProgress& progress);
  String PutBack(const std::vector<MemberHistory::Removed>& gone, JobProgress& progress);
  /// Inserts the rows into the grid, in portions.
  void InsertRows(const std::vector<const MemberHistory::Removed*>& rows, JobProgress& progress);
  void ShowCount(std::int64_t members);
  void GoTo(int row);
  /// Shows count and outcome of a change.
  void ShowChange(const String& outcome);
  void ShowLeftOut(const std::vector<String>& names);

  GroupCommands& commands_;
  GroupStore& store_;
  Labels labels_;
  MemberHistory history_;
  TextIndex contacts_;       ///< the ids of the members that are contacts, while loading
  int arrived_ = 0;          ///< rows that Arrived has seen
  TextIndex ids_;            ///< the ids that are or were in the grid
  std::deque<Known> known_;  ///< of each id; may be longer. A vector would move all when it grows
  std::size_t portion_ = 20000;  ///< even in a list of a million it takes less than 50 ms
};

}  // namespace ktrv::forms
