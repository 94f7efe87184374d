#pragma once

#include <memory>
#include <optional>

#include "controls/FlexGrid.h"
#include "controls/Form.h"
#include "controls/ProgressBar.h"
#include "controls/StatusBar.h"
#include "data/AddressBookQueries.h"
#include "database/Recordset.h"
#include "forms/contact/ContactRequest.h"
#include "services/PreparedCommands.h"
#include "services/Services.h"

namespace ktrv::forms {

/// The list of the current node's contacts: counts them, fetches them in the background into the
/// grid, and tells in the status bar how far it is.
class ContactList {
 public:
  /// What the list is shown with.
  struct Display {
    controls::Form& Window;
    controls::FlexGrid& Grid;
    controls::StatusBar& Status;
    controls::ProgressBar& Progress;
  };

  ContactList(Services& services, BookDatabase& database, Display display);

  /// Makes the counting commands. \throws Error
  void Prepare();

  /// Shows the contents of the node of this key from the database; what was shown or still being
  /// fetched is dropped at once. A failure is logged and told in the status bar.
  void Load(StringView nodeKey);

  /// Shows a contact that was saved in the folder just now behind the others and makes it the
  /// current row, without asking the database. No effect when no list is shown.
  void Add(const SavedContact& contact, StringView folderId);

  /// Drops the list and its fetch and releases the counting commands.
  void Close();

  /// Sorts by the column of this key and moves the sort indicator there; the key "DUMMY" does
  /// nothing. A failure is logged.
  void ChangeSortOrder(StringView columnKey, controls::SortOrder order);

  /// Makes the first row whose name begins with the text the current one and shows it. Nothing
  /// happens when there is none, nor in a grid of a single row.
  void Find(StringView text);

  /// The result that the grid shows; null before the first load.
  database::Recordset* Rows() const { return rsUserContacts_.get(); }
  /// Whether rows are still to come.
  bool IsLoading() const { return loading_; }
  /// Rows counted for the current load, and those added since.
  std::int32_t Total() const { return total_; }
  const String& SortColumn() const { return sortColumn_; }
  bool CanCount() const { return counts_.ArePrepared(); }

 private:
  void Clear();
  void Open(StringView nodeKey);
  /// Counts the node's items into the total and gives its query, which is empty when the host's
  /// dialect word has none; nothing for a key that is neither counted nor queried.
  std::optional<String> Count(StringView nodeKey);
  std::int32_t RowsOf(data::AddressBookQueries::Count which, StringView id);
  void ShowTotal();
  void ShowFailure();
  void RemoveCountPanel();
  void MoveIndicator(StringView columnKey, controls::SortOrder order);

  void rsUserContacts_FetchProgress(std::int64_t progress);
  void rsUserContacts_FetchComplete(const Error* error);
  void FinishLoad();

  Services& services_;
  BookDatabase& database_;
  Display display_;
  PreparedCommands<data::AddressBookQueries::Count> counts_;
  std::unique_ptr<database::Recordset> rsUserContacts_;
  bool loading_ = false;
  bool incomplete_ = false;  ///< the fetch failed: rows are missing, and the status bar says so
  std::int32_t total_ = 0;
  String sortColumn_;
};

}  // namespace ktrv::forms
