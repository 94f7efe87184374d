#pragma once

#include "controls/FlexGrid.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/Nesting.h"

namespace ktrv::windows {

/// The selection and the focused row of a grid and of its list view, kept the same both ways.
class ListSelection {
 public:
  /// Both must outlive this.
  ListSelection(ControlWindow& list, controls::FlexGrid& grid) : list_(list), grid_(grid) {}

  /// While the result lives, what the list view tells is the form's doing, not the user's.
  [[nodiscard]] Nesting Ignoring() { return Nesting(ignoring_); }

  /// Shows the grid's.
  void Show();
  /// Whether Show has rows to change that would be painted one after another.
  bool HasMany() const { return selected_.Count() > 100 || grid_.Selection().Count() > 100; }

  void OnItemChanged(const NMLISTVIEW& change);
  void OnRangeChanged(const NMLVODSTATECHANGE& change);
  /// Takes the selection as it is on the screen. The list view tells neither the rows that are no
  /// longer selected when Shift selects a range, nor a range of a single row.
  void Read();

 private:
  void SetItemState(int item, UINT state, UINT mask);
  void Take(int first, int last, bool selected);
  bool IsShown(int row, UINT state) const;
  /// Whether the list view has just these rows selected.
  bool AreShown(const controls::RowSelection& rows) const;

  ControlWindow& list_;
  controls::FlexGrid& grid_;
  /// What the list view has selected, as far as it has told.
  controls::RowSelection selected_;
  int focused_ = 0;
  controls::RowSelection::Range range_;  ///< told last since the selection was read
  int ignoring_ = 0;
};

}  // namespace ktrv::windows
