#pragma once

#include "forms/HostRecord.h"
#include "services/Workplace.h"

namespace ktrv::forms {

class frmGroupsNew;

/// The one door to the editors: shows each modally on a workplace of its own, with no owner, and
/// keeps the host's record of it. All return when the dialog has closed, and throw Error.
class Editors {
 public:
  /// \param record must outlive the editors.
  explicit Editors(HostRecord& record) : record_(record) {}

  ContactResult Contact(Workplace place, const ContactRequest& request);
  FolderResult Folder(Workplace place, const FolderRequest& request);
  GroupResult Group(Workplace place, const GroupRequest& request);
  /// The group editor for a group that a picker lists.
  GroupResult GroupProperties(Workplace place, const GroupRequest& request);
  /// \return nothing when the user picked nobody. The host's record is left to the caller.
  std::optional<Recipients> Pick(Workplace place, const GroupRequest& request);

  /// Lets the group dialog open editors over itself.
  void Connect(frmGroupsNew& dialog);

 private:
  template <class Dialog, class Request>
  auto Show(ModalDialogs::Kind kind, Workplace place, const Request& request);

  HostRecord& record_;
};

}  // namespace ktrv::forms
