#include "forms/Editors.h"

#include <utility>

#include "forms/contact/frmNewContact.h"
#include "forms/folder/frmSelectFolder.h"
#include "forms/groups/frmGroupsNew.h"

namespace ktrv::forms {
namespace {

using Kind = ModalDialogs::Kind;

/// Sets the flag in the host's record while the properties of a listed group are open.
class PropertiesFlag {
 public:
  explicit PropertiesFlag(bool& flag) : flag_(flag), former_(flag) { flag_ = true; }
  ~PropertiesFlag() { flag_ = former_; }
  PropertiesFlag(const PropertiesFlag&) = delete;
  PropertiesFlag& operator=(const PropertiesFlag&) = delete;

 private:
  bool& flag_;
  bool former_;
};

}  // namespace

template <class Dialog, class Request>
auto Editors::Show(Kind kind, Workplace place, const Request& request) {
  record_.Take(request);
  ModalDialogs& modal = place.Services.Modal;
  Dialog dialog(std::move(place), request);
  if constexpr (std::is_same_v<Dialog, frmGroupsNew>) Connect(dialog);
  modal.Show(kind, dialog);
  record_.Take(dialog.Result());
  return dialog.Result();
}

ContactResult Editors::Contact(Workplace place, const ContactRequest& request) {
  return Show<frmNewContact>(Kind::Contact, std::move(place), request);
}

FolderResult Editors::Folder(Workplace place, const FolderRequest& request) {
  return Show<frmSelectFolder>(Kind::Folder, std::move(place), request);
}

GroupResult Editors::Group(Workplace place, const GroupRequest& request) {
  // Cancelling clears the names of an earlier selection, but not of one made while the editor was
  // open if there was none before.
  const bool hasNames = !record_.ContactsNames().empty();
  GroupResult result = Show<frmGroupsNew>(Kind::Group, std::move(place), request);
  if (hasNames && !result.Saved) record_.ContactsNames().clear();
  return result;
}

GroupResult Editors::GroupProperties(Workplace place, const GroupRequest& request) {
  const PropertiesFlag open(record_.IsOpenForProperties());
  return Group(std::move(place), request);
}

std::optional<Recipients> Editors::Pick(Workplace place, const GroupRequest& request) {
  ModalDialogs& modal = place.Services.Modal;
  frmGroupsNew picker(std::move(place), request);
  Connect(picker);
  modal.Show(Kind::Group, picker);
  return picker.Picked();
}

void Editors::Connect(frmGroupsNew& dialog) {
  dialog.OpenContact = [this](Workplace place, const ContactRequest& request) {
    return Contact(std::move(place), request);
  };
  dialog.OpenProperties = [this](Workplace place, const GroupRequest& request) {
    return GroupProperties(std::move(place), request);
  };
}

}  // namespace ktrv::forms
