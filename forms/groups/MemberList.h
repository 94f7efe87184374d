#pragma once

#include "common/TextIndex.h"
#include "forms/groups/ContactFetch.h"
#include "forms/groups/ContactRow.h"
#include "forms/groups/GroupCommands.h"
#include "forms/groups/GroupStore.h"

namespace ktrv::forms {

class JobProgress;

/// The right list of the group dialog: members of a group, or recipients picked. An id stands in it
/// at most once, whatever its kind: a contact keeps a group of the same number out.
class MemberList {
 public:
  struct Display {
    controls::FlexGrid& Grid;
    controls::Label& Loading;
    controls::ProgressBar& Bar;
    controls::Label& Count;
    controls::Label& LeftOut;
  };

  /// All must outlive the list.
  MemberList(Services& services, BookDatabase& database, GroupCommands& commands, GroupStore& store,
             Display display);

  /// It began or ended to load.
  std::function<void()> Changed;

  /// No members.
  void Empty();
  /// Reads the group into the store and starts to fill the list with its members.
  /// Failures are logged and shown.
  void Load();
  /// Says that the members could not be loaded.
  void Fail();
  /// Gives up loading.
  void Cancel();
  /// Whether all members are there: not while they load, nor after that failed. Until then nothing
  /// can be added or removed, and nothing may be saved, since members that did not come would be
  /// lost.
  bool IsComplete() const { return complete_; }
  bool IsLoading() const { return fetch_.CurrentState() == ContactFetch::State::Loading; }

  /// Appends these rows of the other list unless their ids are there already. Those that another
  /// kind's row of the same id kept out are named beside the list until it changes again. Where the
  /// user stops it, the rows before that are there.
  void Take(controls::FlexGrid& source, const std::vector<int>& rows, JobProgress& progress);
  void RemoveSelected();

  int Count() const { return display_.Grid.Rows() - 1; }

 private:
  void Loaded();
  void RemoveStrangers();
  void ReadIds();
  void Remember(const String& id, const String& kind);
  void ShowCount(std::int64_t members);
  void ShowLeftOut(const std::vector<String>& names);

  Services& services_;
  BookDatabase& database_;
  GroupCommands& commands_;
  GroupStore& store_;
  Display display_;
  ContactFetch fetch_;
  bool complete_ = false;
  TextIndex ids_;              ///< the ids in the grid
  std::vector<String> kinds_;  ///< of each of them
};

}  // namespace ktrv::forms
