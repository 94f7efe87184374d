#pragma once

#include <vector>

#include "controls/Form.h"

namespace ktrv {

/// The open modal dialogs of one host thread.
class ModalDialogs {
 public:
  /// In the order in which the component unloads them at its end.
  enum class Kind { Contact, Folder, Group };

  /// Shows the dialog modally without an owner. Returns when it is closed. \throws Error
  void Show(Kind kind, controls::Form& dialog);

  /// The open dialogs in unload order: by kind; within a kind the one opened last first.
  std::vector<controls::Form*> Open() const;

 private:
  struct Shown {
    Kind What;
    controls::Form* Dialog;
  };

  std::vector<Shown> shown_;  ///< the one opened last at the end
};

}  // namespace ktrv
