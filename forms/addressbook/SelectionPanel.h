#pragma once

#include "controls/FlexGrid.h"
#include "controls/StatusBar.h"

namespace ktrv::forms {

/// The middle panel of the status bar: how many rows are selected, or a note, for example why a
/// command had no effect. A note stays until the selection changes or another note replaces it.
class SelectionPanel {
 public:
  /// Both must outlive the object.
  SelectionPanel(controls::StatusBar& status, const controls::FlexGrid& grid)
      : status_(status), grid_(grid) {}

  void Note(StringView text);
  void ShowSelection();

 private:
  controls::StatusBar& status_;
  const controls::FlexGrid& grid_;
};

}  // namespace ktrv::forms
