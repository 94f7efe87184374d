#pragma once

#include <functional>
#include <memory>

#include "controls/FlexGrid.h"
#include "controls/Label.h"
#include "controls/ProgressBar.h"
#include "database/Recordset.h"
#include "services/BookDatabase.h"
#include "services/Services.h"

namespace ktrv::forms {

/// Fills a list of the group dialog by a background query and shows the progress in its label and
/// bar.
class ContactFetch {
 public:
  enum class State { Idle, Loading, Complete, Failed };

  /// All references must outlive the fetch. \param context context text of its error records
  ContactFetch(Services& services, BookDatabase& database, controls::FlexGrid& grid,
               controls::Label& label, controls::ProgressBar& bar, StringView context);

  /// Raised when the state has changed.
  std::function<void()> Changed;

  /// Cancels a running fetch and shows the label and the bar for the next one.
  void Begin();
  /// Sets the expected number of rows; ignored unless positive.
  void SetTotal(std::int64_t rows);
  /// Starts the fetch in blocks of 500 rows and binds the grid to it. The rows of the previous
  /// query are released. \throws Error
  void Open(const String& query);
  /// Cancels a running fetch, shows the reason for a failure and sets the state Failed; the list
  /// stays as it is.
  void Fail(StringView reason);
  /// Cancels a running fetch. The state stays, and fetched rows too.
  void Cancel();

  State CurrentState() const { return state_; }

 private:
  void Progress(std::int64_t rows);
  void Complete(const Error* error);
  void Become(State state);

  Services& services_;
  BookDatabase& database_;
  controls::FlexGrid& grid_;
  controls::Label& label_;
  controls::ProgressBar& bar_;
  String context_;
  std::unique_ptr<database::Recordset> rows_;
  State state_ = State::Idle;
  bool lost_ = false;  ///< fetched rows could not be added to the grid
};

}  // namespace ktrv::forms
