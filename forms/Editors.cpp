#include "forms/Editors.h"

#include <utility>

#include "common/ScopeExit.h"
#include "forms/contact/frmNewContact.h"
#include "forms/folder/frmSelectFolder.h"
#include "forms/groups/frmGroupsNew.h"

namespace ktrv::forms {

using Kind = ModalDialogs::Kind;

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
  bool& isOpen = record_.IsOpenForProperties();
  const ScopeExit restore([&isOpen, former = isOpen] { isOpen = former; });
  isOpen = true;
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
  const bool picks = dialog.Request().LoadGroupFor == LoadGroupFor::SelectReceipient;
  dialog.Size = picks ? &pickerSize_ : &groupSize_;
  dialog.OpenContact = [this](Workplace place, const ContactRequest& request) {
    return Contact(std::move(place), request);
  };
  dialog.OpenProperties = [this](Workplace place, const GroupRequest& request) {
    return GroupProperties(std::move(place), request);
  };
}

}  // namespace ktrv::forms
