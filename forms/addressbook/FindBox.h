#pragma once

#include "controls/FlexGrid.h"
#include "controls/TextBox.h"
#include "forms/addressbook/SelectionPanel.h"

namespace ktrv::forms {

/// The find box of the address book window: selects the row that the typed text finds. While a list
/// is loading, a text that finds nothing yet is searched again in the rows that arrive, unless the
/// user has selected a row or gone to the list meanwhile.
class FindBox {
 public:
  /// All must outlive the object.
  FindBox(controls::TextBox& box, controls::FlexGrid& grid, SelectionPanel& panel)
      : box_(box), grid_(grid), panel_(panel) {}

  /// The text has changed: selects the first row that it finds. \param isLoading whether rows are
  /// still to come
  void Search(bool isLoading);
  /// Selects the next or previous row that the text finds.
  void GoOn(bool backward);
  /// Rows have arrived. \param isComplete whether they were the last ones
  void RowsCame(bool isComplete);
  /// Another list is being loaded.
  void Forget();

 private:
  /// A grid that is reset for loading has two rows too.
  bool HasRows() const { return grid_.Rows() > 2; }
  bool Take(int row);
  void ShowFound(bool found);
  void Wait();

  controls::TextBox& box_;
  controls::FlexGrid& grid_;
  SelectionPanel& panel_;
  bool waiting_ = false;
  int searched_ = 0;               ///< rows in which a waiting text was not found
  controls::RowSelection before_;  ///< the selection when waiting began
};

}  // namespace ktrv::forms
