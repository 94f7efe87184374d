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

/// Fills a list of the group dialog from a query in the background, with its label and bar.
class ContactFetch {
 public:
  enum class State { Idle, Loading, Complete, Failed };

  /// Everything given must outlive the fetch. \param context text of its error records.
  ContactFetch(Services& services, BookDatabase& database, controls::FlexGrid& grid,
               controls::Label& label, controls::ProgressBar& bar, StringView context);

  /// The state changed.
  std::function<void()> Changed;

  /// Gives up what still runs and shows the label and the bar for what is to come.
  void Begin();
  /// Rows that will come, as far as is known.
  void SetTotal(std::int64_t rows);
  /// Starts to fetch the query's rows, 500 a block, and binds the grid to them; the rows of the
  /// last query go. \throws Error
  void Open(const String& query);
  /// Leaves the list as it stands and tells the user why it is not the one that was asked for.
  void Fail(StringView reason);
  void Cancel();

  State CurrentState() const { return state_; }

 private:
  void Progress(std::int64_t rows);
  void Complete(const Error* error, database::EventStatus status);
  void Become(State state);

  Services& services_;
  BookDatabase& database_;
  controls::FlexGrid& grid_;
  controls::Label& label_;
  controls::ProgressBar& bar_;
  String context_;
  std::unique_ptr<database::Recordset> rows_;
  State state_ = State::Idle;
  bool lost_ = false;  ///< rows that came could not be taken in
};

}  // namespace ktrv::forms
