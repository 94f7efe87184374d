#pragma once

#include "controls/FlexGrid.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/Nesting.h"

namespace ktrv::windows {

/// Synchronises selection and focused row of a grid and its list view, in both directions.
class ListSelection {
 public:
  /// Both must outlive the object.
  ListSelection(ControlWindow& list, controls::FlexGrid& grid) : list_(list), grid_(grid) {}

  /// Ignores the list view's notifications during the result's lifetime, because the program causes
  /// them.
  [[nodiscard]] Nesting Ignoring() { return Nesting(ignoring_); }

  /// Applies the grid's selection and current row to the list view.
  void Show();
  /// Whether Show may change so many rows that painting each of them would take long.
  bool HasMany() const { return selected_.Count() > 100 || grid_.Selection().Count() > 100; }

  void OnItemChanged(const NMLISTVIEW& change);
  void OnRangeChanged(const NMLVODSTATECHANGE& change);
  /// Reads the selection from the list view. It does not notify of rows that Shift selections
  /// deselect, nor of a range with a single row.
  void Read();

 private:
  void SetItemState(int item, UINT state, UINT mask);
  void Take(int first, int last, bool selected);
  bool IsShown(int row, UINT state) const;
  /// Whether exactly these rows are selected in the list view.
  bool AreShown(const controls::RowSelection& rows) const;

  ControlWindow& list_;
  controls::FlexGrid& grid_;
  /// The selection of the list view, as far as it was notified.
  controls::RowSelection selected_;
  int focused_ = 0;
  controls::RowSelection::Range range_;  ///< range of the last notification since Read
  int ignoring_ = 0;
};

}  // namespace ktrv::windows
