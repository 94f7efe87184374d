#pragma once

#include "controls/ComboBox.h"
#include "data/GroupQueries.h"
#include "forms/groups/ContactFetch.h"
#include "forms/groups/GroupCommands.h"

namespace ktrv::forms {

/// The left list of the group dialog: the candidates of the source that its user chose.
class SourceList {
 public:
  struct Display {
    controls::ComboBox& Selector;
    controls::FlexGrid& Grid;
    controls::Label& Loading;
    controls::ProgressBar& Bar;
  };

  /// All must outlive the list.
  SourceList(Services& services, BookDatabase& database, GroupCommands& commands, Display display);

  /// It began or ended to load.
  std::function<void()> Changed;

  /// Fills the selector with the shared contacts and every folder. Failures are logged. \return
  /// whether it is filled
  bool FillSelector();

  /// Fills the list with what the source offers. Failures are logged and shown. A source that could
  /// not be loaded offers nobody: those of the former one would be taken for its people.
  /// \param folderId a text without a number counts as 0, the shared contacts.
  void Load(data::GroupQueries::Purpose purpose, StringView folderId);
  /// Says that nothing could be loaded.
  void Fail();
  void Cancel();
  bool IsLoading() const { return fetch_.CurrentState() == ContactFetch::State::Loading; }
  /// Whether all that the source offers is there: not while it loads, nor after that failed.
  bool IsComplete() const {
    return !IsLoading() && fetch_.CurrentState() != ContactFetch::State::Failed;
  }

  /// Selects and shows the first row from `startRow` on whose name begins with the text.
  /// \return whether there is one.
  bool Find(StringView text, int startRow);

  /// TYPE and NAME of the source that was asked for last; empty when they could not be read.
  const String& Kind() const { return kind_; }
  const String& Name() const { return name_; }
  /// The text that fills the list.
  const String& Query() const { return query_; }

 private:
  void AddFolder(const database::Recordset& folder);
  void ChooseSource(StringView folderId);
  std::int64_t CountRows(data::GroupQueries::Purpose purpose, StringView folderId);

  Services& services_;
  BookDatabase& database_;
  GroupCommands& commands_;
  Display display_;
  ContactFetch fetch_;
  String kind_;
  String name_;
  String query_;
};

}  // namespace ktrv::forms
