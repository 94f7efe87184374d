#pragma once

#include <optional>
#include <utility>

#include "common/TextIndex.h"
#include "controls/FlexGrid.h"
#include "database/Transaction.h"
#include "forms/groups/GroupCommands.h"
#include "forms/groups/StoredGroup.h"
#include "services/Enumerations.h"

namespace ktrv::forms {

class JobProgress;

/// Reads and writes one group and its memberships. Keeps track of what it has read and written, so
/// that after a failure nothing is written twice, and changes of other users are not overwritten
/// unnoticed. All methods throw Error; those with a progress also throw Stopped.
class GroupStore {
 public:
  /// \param commands must outlive the store. \param groupId empty for a new group. \param groupName
  /// as known to the opener
  GroupStore(GroupCommands& commands, String groupId, String groupName);

  /// Empty until a new group is in the database.
  const String& GroupId() const { return groupId_; }

  /// Whether a group has the name; for Modify, another group. Compared by the database.
  bool IsNameTaken(const String& name, ModeOfOperation mode);

  /// Reads the group for display in the dialog.
  void Load();
  /// The group as last read or written.
  const StoredGroup& Known() const { return known_; }
  /// The ids of the members that are contacts, as read by Load, in the format of contact ids. Moves
  /// them out: the next call returns none.
  TextIndex TakeContactIds() { return std::exchange(contactIds_, {}); }

  /// One attempt to save, in a transaction if the engine supports it. Checks and writes belong to
  /// the same transaction, and a lost link rolls it back.
  class Saving {
   public:
    /// Locks an existing group: waits for another save of it and prevents the next one, so that the
    /// checks see what the writes replace. \throws Error
    Saving(GroupStore& store, database::Connection& connection);
    /// Commits. \throws Error; call Fail then
    void Finish();
    /// Call after a failed statement. Commits the statements before it, because readers of the
    /// tables rely on that. If there were none, rolls back.
    void Fail();
    /// Call after any other failure. Rolls back if possible.
    void Undo();

   private:
    void Forget();

    GroupStore& store_;
    database::Transaction transaction_;
    const bool wasIncomplete_;
  };

  enum class Now { AsKnown, Changed, Gone };
  /// Reads the group again and compares it with the known state.
  Now LookAgain();
  /// Accepts the state found by LookAgain as known.
  void TakeAsKnown();

  enum class Place { Fit, Remote, Gone };
  /// Whether the folder can hold a new group.
  Place LookAtFolder(const String& folderId);

  /// The names of members whose ids are too long for a membership.
  static std::vector<String> TooLong(controls::FlexGrid& members);
  /// The names of members that no longer exist in the database.
  std::vector<String> Missing(controls::FlexGrid& members, JobProgress& progress);

  /// Inserts the group and determines its id.
  void Create(const String& name, const String& folderId);
  /// Whether an insert was started and the id is still unknown.
  bool IsCreationOpen() const { return creation_.has_value(); }
  /// Determines the outcome of that insert. \return true if the group exists; its id is known then.
  /// False if nothing was inserted; Create may be called again. \throws Error also if the insert
  /// succeeded but the row is not found
  bool FindCreated();

  /// \throws Error RowChanged if the group no longer exists
  void Rename(const String& name);

  /// Replaces all memberships by the rows of the grid.
  void ReplaceMembers(controls::FlexGrid& members, JobProgress& progress);

  /// Whether the group was written only partly.
  bool IsIncomplete() const { return incomplete_; }

 private:
  struct Member {
    String Id;
    String Type;
  };
  struct Details {
    String FolderId;
    TextIndex ContactIds;
  };
  struct Creation {
    String Name;
    String FolderId;
    bool Worked = false;   ///< whether the insert succeeded; else its outcome is unknown
    bool Unfound = false;  ///< whether the link that inserted it could not find it
  };

  /// \param details receives more columns unless null. \return nullopt if there is no such group
  std::optional<StoredGroup> Read(const String& groupId, Details* details = nullptr);
  void Became(const String& groupId, StoredGroup stored);
  /// Inserts memberships in addition to the known ones. \throws Error
  void InsertMembers(const std::vector<Member>& members, JobProgress& progress);
  bool InsertTogether(const std::vector<Member>& members);
  /// Whether nothing of this attempt is stored. \throws Error
  bool HasVanished();
  /// Call if the outcome of this attempt is unknown. A new group must be looked up again then.
  void Doubt();

  GroupCommands& commands_;
  String groupId_;
  const String groupName_;
  StoredGroup known_;
  /// The value of known_ if the last statement succeeded although it reported a failure.
  StoredGroup attempted_;
  /// The value of known_ before the last attempt to save, whose outcome may be unknown.
  StoredGroup before_;
  TextIndex contactIds_;
  bool hasWritten_ = false;  ///< a statement of this attempt has succeeded
  StoredGroup found_;        ///< result of LookAgain
  std::optional<Creation> creation_;
  std::optional<Creation> created_;  ///< set if this attempt has inserted the group
  bool incomplete_ = false;
  bool writesTogether_ = true;  ///< until a batch insert turns out to be unsupported
};

}  // namespace ktrv::forms
