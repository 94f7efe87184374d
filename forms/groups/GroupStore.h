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

/// Reads and writes one group and its memberships, one statement after the other. It
/// knows what it read and wrote, so that nothing is written twice after a failure and nothing over
/// what another user wrote meanwhile. All throw Error.
class GroupStore {
 public:
  /// \param commands must outlive the store. \param groupId empty for a new group. \param groupName
  /// as the opener knows it
  GroupStore(GroupCommands& commands, String groupId, String groupName);

  /// Empty until a new group is in the database.
  const String& GroupId() const { return groupId_; }

  /// Whether a group has the name; in Modify another one than this. The database compares.
  bool IsNameTaken(const String& name, ModeOfOperation mode);

  /// Reads what the dialog is going to show.
  void Load();
  /// The group as it was read, or written since.
  const StoredGroup& Known() const { return known_; }
  /// Ids of the members that are contacts, as Load found them, in the form in which contacts have
  /// them. They are handed over: the next call gets none.
  TextIndex TakeContactIds() { return std::exchange(contactIds_, {}); }

  /// One attempt to save, in a transaction where the engine has one: so nobody comes between the
  /// looks and the writes, and a lost link leaves the group as it was.
  class Saving {
   public:
    Saving(GroupStore& store, database::Connection& connection);
    /// All is written. \throws Error after which Fail is to be called
    void Finish();
    /// A statement failed. Those before it stay done, which readers of the tables count on; when
    /// there were none, it is undone itself.
    void Fail();
    /// Something else broke it off: nothing of it stays, where it can be undone.
    void Undo();

   private:
    void Forget();

    GroupStore& store_;
    database::Transaction transaction_;
    const bool wasIncomplete_;
  };

  enum class Now { AsKnown, Changed, Gone };
  /// What has become of the group.
  Now LookAgain();
  /// What LookAgain found is known from here on.
  void TakeAsKnown();

  enum class Place { Fit, Remote, Gone };
  /// Whether the folder can take a new group.
  Place LookAtFolder(const String& folderId);

  /// Names of the members whose ids no membership can hold.
  static std::vector<String> TooLong(controls::FlexGrid& members);
  /// Names of the members that are in the database no more.
  std::vector<String> Missing(controls::FlexGrid& members, JobProgress& progress);

  /// Inserts the group, which has an id then.
  void Create(const String& name, const String& folderId);
  /// Whether an insert was begun and the group's id is not known.
  bool IsCreationOpen() const { return creation_.has_value(); }
  /// Looks what became of that insert. \return whether the group is there, and its id is known
  /// then. Else nothing was inserted, and Create may be called again. \throws Error also
  /// when it was inserted and is not found.
  bool FindCreated();

  /// \throws Error RowChanged when the group is no longer there.
  void Rename(const String& name);

  /// Replaces all memberships by the rows of the grid.
  void ReplaceMembers(controls::FlexGrid& members, JobProgress& progress);

  /// Whether the group was written in part.
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
    bool Worked = false;  ///< the insert; else its outcome is unknown
  };

  /// Nothing when there is no such group.
  /// \param details what else is to be known of the group
  std::optional<StoredGroup> Read(const String& groupId, Details* details = nullptr);
  void Became(const String& groupId, StoredGroup stored);
  /// Writes the memberships behind those that are known. \throws Error
  void InsertMembers(const std::vector<Member>& members, JobProgress& progress);
  bool InsertTogether(const std::vector<Member>& members);
  /// Whether nothing of this attempt is there. \throws Error
  bool HasVanished();
  /// Nobody knows whether anything of this attempt is stored.
  void Doubt();

  GroupCommands& commands_;
  String groupId_;
  const String groupName_;
  StoredGroup known_;
  /// What known_ becomes if the last statement worked although it failed.
  StoredGroup attempted_;
  /// What known_ was before the last attempt to save, of which nobody may know what is stored.
  StoredGroup before_;
  TextIndex contactIds_;
  bool hasWritten_ = false;  ///< a statement of this attempt worked
  StoredGroup found_;        ///< by LookAgain
  std::optional<Creation> creation_;
  std::optional<Creation> created_;  ///< by this attempt
  bool incomplete_ = false;
  bool writesTogether_ = true;  ///< as far as is known
};

}  // namespace ktrv::forms
