#pragma once

#include <functional>

#include "controls/FlexGrid.h"
#include "controls/Label.h"
#include "controls/ProgressBar.h"
#include "services/BackgroundList.h"
#include "services/Services.h"

namespace ktrv::forms {

/// A list of the group dialog. Shows the progress of its fetch in a label and a bar.
class DialogList : public BackgroundList {
 public:
  struct Display {
    controls::FlexGrid& Grid;
    controls::Label& Loading;
    controls::ProgressBar& Bar;
  };

  /// Raised when loading has started or ended.
  std::function<void()> Changed;

 protected:
  /// All references must outlive the list. \param context context text of its error records
  DialogList(Services& services, BookDatabase& database, Display display, StringView context);

  /// Cancels a running fetch and shows the label and the bar for the next one.
  void Begin();
  /// Sets the expected number of rows; ignored unless positive.
  void SetTotal(std::int64_t rows);
  /// Starts the fetch in blocks of 500 rows and binds the grid to it. The rows of the previous
  /// query are released. \throws Error
  void Open(const String& query);
  /// Cancels a running fetch, shows the reason for a failure and sets the state Failed; the list
  /// stays as it is.
  void ShowFailure(StringView reason);
  /// Fetched rows were added to the grid. \throws Error: they count as not added
  virtual void Arrived() {}
  /// All rows are in the grid, before Changed.
  virtual void Loaded() {}

  Services& services_;
  Display display_;

 private:
  void FetchProgress(std::int64_t rows) override;
  void FetchComplete(const Error* error) override;
  void Become(State state);

  String context_;
  bool lost_ = false;  ///< fetched rows could not be added to the grid
};

}  // namespace ktrv::forms
