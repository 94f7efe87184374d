#pragma once

#include "forms/HostRecord.h"
#include "services/Workplace.h"

namespace ktrv::forms {

/// The one door to the editors: shows each modally on a workplace of its own, with no owner, and
/// keeps the host's record of it. All return when the dialog has closed, and throw Error.
class Editors {
 public:
  /// \param record must outlive the editors.
  explicit Editors(HostRecord& record) : record_(record) {}

  FolderResult Folder(Workplace place, const FolderRequest& request);

 private:
  template <class Dialog>
  auto Show(ModalDialogs::Kind kind, ModalDialogs& modal, Dialog& dialog);

  HostRecord& record_;
};

}  // namespace ktrv::forms
