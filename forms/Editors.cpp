#include "forms/Editors.h"

#include <utility>

#include "forms/folder/frmSelectFolder.h"

namespace ktrv::forms {

template <class Dialog>
auto Editors::Show(ModalDialogs::Kind kind, ModalDialogs& modal, Dialog& dialog) {
  try {
    modal.Show(kind, dialog);
  } catch (...) {
    record_.Take(dialog.Result());
    throw;
  }
  auto result = dialog.Result();
  record_.Take(result);
  return result;
}

FolderResult Editors::Folder(Workplace place, const FolderRequest& request) {
  record_.Take(request);
  ModalDialogs& modal = place.Services.Modal;
  frmSelectFolder editor(std::move(place), request);
  return Show(ModalDialogs::Kind::Folder, modal, editor);
}

}  // namespace ktrv::forms
