#pragma once

#include <optional>

#include "controls/GridRows.h"
#include "controls/SortKeys.h"

namespace ktrv::controls {

/// Sorts the rows of a grid by a column, in portions. The rows keep their order until the end; if
/// they change meanwhile, the sort begins anew.
class RowSort {
 public:
  /// Both must outlive the object. \param ascending false: descending
  RowSort(GridRows& rows, const Language& language, int column, bool ascending);

  /// Does a portion, of a few milliseconds. \return whether there is more
  bool GoOn();
  /// Puts the rows in order. \pre GoOn has returned false, and no row has changed since
  /// \return the former place of each row
  GridRows::FormerRows Finish();

 private:
  void AddKeys();

  GridRows& rows_;
  const Language& language_;
  const int column_;
  const bool ascending_;
  std::uint64_t version_ = 0;  ///< of the rows
  std::optional<SortKeys> keys_;
};

}  // namespace ktrv::controls
