#pragma once

#include <functional>

#include "controls/FlexGrid.h"
#include "controls/TextBox.h"

namespace ktrv::forms {

/// The find box of the group dialog's right list: selects the row that the typed text finds.
class MemberFind {
 public:
  /// Both must outlive the object.
  MemberFind(controls::TextBox& box, controls::FlexGrid& list) : box_(box), list_(list) {}

  /// Connects the box and its keys: Enter and F3 go on, with Shift back; Down goes to the list, Esc
  /// clears the box. F3 also works in the list.
  void Connect();

  /// Raised with a text that was not found, and with an empty one when a text is found again.
  std::function<void(const String& text)> NotFound;

 private:
  void Search();
  void GoOn(bool backward);
  void ToList();
  void Show(int row);
  void ShowFound(bool found);
  bool HasText() const { return !Trim(box_.Text()).empty(); }

  controls::TextBox& box_;
  controls::FlexGrid& list_;
  bool missing_ = false;
};

}  // namespace ktrv::forms
