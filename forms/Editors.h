#pragma once

#include "forms/HostRecord.h"
#include "forms/groups/DialogStretch.h"
#include "services/Workplace.h"

namespace ktrv::forms {

class frmGroupsNew;

/// Opens all editors: modally, without an owner, on a workplace of their own. Stores request and
/// result in the host's record. All methods return after the dialog has closed, and throw Error.
class Editors {
 public:
  /// \param record must outlive the editors.
  explicit Editors(HostRecord& record) : record_(record) {}

  ContactResult Contact(Workplace place, const ContactRequest& request);
  FolderResult Folder(Workplace place, const FolderRequest& request);
  GroupResult Group(Workplace place, const GroupRequest& request);
  /// Opens the group editor for a group listed by a picker.
  GroupResult GroupProperties(Workplace place, const GroupRequest& request);
  /// \return nullopt if nothing was picked. The caller stores the result in the host's record.
  std::optional<Recipients> Pick(Workplace place, const GroupRequest& request);

  /// Lets the group dialog open editors.
  void Connect(frmGroupsNew& dialog);

 private:
  template <class Dialog, class Request>
  auto Show(ModalDialogs::Kind kind, Workplace place, const Request& request);

  HostRecord& record_;
  // As the user left them, as long as the host's thread has the component.
  DialogSize groupSize_;
  DialogSize pickerSize_;
};

}  // namespace ktrv::forms
