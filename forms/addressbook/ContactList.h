#pragma once

#include <functional>
#include <optional>

#include "controls/FlexGrid.h"
#include "controls/Form.h"
#include "controls/ProgressBar.h"
#include "controls/StatusBar.h"
#include "data/AddressBookQueries.h"
#include "forms/contact/ContactRequest.h"
#include "services/BackgroundList.h"
#include "services/ListPlace.h"
#include "services/PreparedCommands.h"
#include "services/Services.h"

namespace ktrv::forms {

/// The contact list of the current node. Counts the rows, fetches them in the background into the
/// grid and shows the progress in the status bar.
class ContactList final : public BackgroundList {
 public:
  /// The controls that the list uses.
  struct Display {
    controls::Form& Window;
    controls::FlexGrid& Grid;
    controls::StatusBar& Status;
    controls::ProgressBar& Progress;
  };

  ContactList(Services& services, BookDatabase& database, Display display);

  /// Raised when the former list is gone and the next one is about to be loaded.
  std::function<void()> LoadStarts;
  /// Raised when rows have arrived in the grid; at the end of a load with `isComplete`.
  std::function<void(bool isComplete)> RowsCame;

  /// Opens the connection and creates the counting statements. \throws Error
  void Prepare();

  /// Loads the list of the node with this key. Discards the present list and cancels its fetch. A
  /// failure is logged and shown in the status bar. If it is the node of the present list, the user
  /// stays at the same place of it.
  void Load(StringView nodeKey);
  /// The user goes elsewhere in a list that is still loading.
  void LeavePlace() { place_.reset(); }

  /// Appends a contact that was just saved in the folder, without a query, and makes it the current
  /// row. No effect when no list is shown.
  void Add(const SavedContact& contact, StringView folderId);

  /// Discards the list, cancels its fetch and releases the counting statements.
  void Close();

  /// Sorts by the column with this key and moves the sort indicator there. No effect for the key
  /// "DUMMY". A failure is logged.
  void ChangeSortOrder(StringView columnKey, controls::SortOrder order);

  /// The recordset of the grid; null unless a list is shown.
  database::Recordset* Rows() const { return rows_.get(); }
  /// Rows counted for the current load, plus those added since.
  std::int32_t Total() const { return total_; }
  const String& SortColumn() const { return sortColumn_; }
  bool CanCount() const { return counts_.ArePrepared(); }

 private:
  void Clear();
  /// Discards the rows and cancels their fetch.
  void Drop();
  void Open(StringView nodeKey);
  /// Sets the total to the number of the node's items. \return the node's query, which is empty for
  /// an unknown dialect word; nullopt for a key without list
  std::optional<String> Count(StringView nodeKey);
  std::int32_t RowsOf(data::AddressBookQueries::Count which, StringView id);
  void ShowTotal();
  void ShowFailure();
  void HideProgress();
  void RemoveCountPanel();
  void MoveIndicator(StringView columnKey, controls::SortOrder order);
  void KeepPlace(StringView nodeKey);

  void FetchProgress(std::int64_t rows) override;
  void FetchComplete(const Error* error) override;
  void FinishLoad(bool isComplete);

  Services& services_;
  Display display_;
  PreparedCommands<data::AddressBookQueries::Count> counts_;
  std::int32_t total_ = 0;
  String sortColumn_;
  String nodeKey_;                  ///< of the present list
  std::optional<ListPlace> place_;  ///< where the user was before the load
};

}  // namespace ktrv::forms
