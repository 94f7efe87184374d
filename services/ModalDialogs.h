#pragma once

#include <vector>

#include "controls/Form.h"

namespace ktrv {

/// The dialogs of a host thread that are open and modal.
class ModalDialogs {
 public:
  /// In the order in which they are unloaded when the component goes.
  enum class Kind { Contact, Folder, Group };

  /// Shows the dialog modally with no owner; returns when it is closed. \throws Error
  void Show(Kind kind, controls::Form& dialog);

  /// The open dialogs in the order in which they are to be unloaded: by kind, and among those of a
  /// kind the one that was opened last first.
  std::vector<controls::Form*> Open() const;

 private:
  struct Shown {
    Kind What;
    controls::Form* Dialog;
  };

  std::vector<Shown> shown_;  ///< the one that was opened last at the end
};

}  // namespace ktrv
