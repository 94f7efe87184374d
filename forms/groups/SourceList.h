#pragma once

#include <map>
#include <optional>

#include "controls/ComboBox.h"
#include "data/GroupQueries.h"
#include "forms/groups/DialogList.h"
#include "forms/groups/GroupCommands.h"
#include "services/ListPlace.h"

namespace ktrv::forms {

/// The left list of the group dialog: the candidates from the selected source.
class SourceList final : public DialogList {
 public:
  /// All references must outlive the object.
  SourceList(Services& services, BookDatabase& database, GroupCommands& commands,
             controls::ComboBox& selector, Display display);

  /// Fills the selector with the shared contacts and all folders. Failures are logged. \return
  /// whether it is filled
  bool FillSelector();

  /// Starts to load the candidates of a source. In a source that was shown before, order, current
  /// row and scroll will be as they were left. Failures are logged and shown; the list is empty
  /// then, so that it does not show candidates of the previous source.
  /// \param folderId a text without a number counts as 0, the shared contacts
  void Load(data::GroupQueries::Purpose purpose, StringView folderId);
  /// Clears the list and shows that it could not be loaded.
  void Fail();
  /// The user's order has been established.
  void Sorted();
  /// Whether all candidates are in the list: false while loading and after a failure.
  bool IsComplete() const { return !IsLoading() && state_ != State::Failed; }

  /// Selects the first row from `startRow` whose name starts with the text, and scrolls to it.
  /// \return whether there is one
  bool Find(StringView text, int startRow);
  /// The same for the next row after `row` with a word of the name, or a number, that starts with
  /// the text; continues at the start of the list.
  bool FindElsewhere(StringView text, int row);

  /// TYPE and NAME of the last requested source; empty if they could not be read.
  const String& Kind() const { return kind_; }
  const String& Name() const { return name_; }
  /// The query of the list.
  const String& Query() const { return query_; }

 private:
  /// How the user has left a source.
  struct Left {
    ListPlace Place;
    String SortedBy;  ///< the key of the column; empty if the rows were in no order
    controls::SortOrder Order;
  };

  void Loaded() override;
  void Leave(StringView folderId);
  bool Show(int row);
  void AddFolder(const database::Recordset& folder);
  void ChooseSource(StringView folderId);
  std::int64_t CountRows(data::GroupQueries::Purpose purpose, StringView folderId);

  GroupCommands& commands_;
  controls::ComboBox& selector_;
  String kind_;
  String name_;
  String query_;
  std::map<String, Left> left_;  ///< by folder id
  String shown_;                 ///< folder id of the list; empty if it is not loaded
  bool isReturning_ = false;     ///< the rows are being sorted as they were left
};

}  // namespace ktrv::forms
