#include "component/Dialogs.h"

#include <utility>

namespace ktrv {

Dialogs::Dialogs(Session& session) : session_(session) {}

Dialogs::~Dialogs() {
  UnloadAll();
}

forms::frmAddressBook& Dialogs::AddressBook() {
  if (!addressBook_) addressBook_ = std::make_unique<forms::frmAddressBook>(session_);
  return *addressBook_;
}

void Dialogs::ShowModal(Editor kind, controls::Form& editor) {
  struct Restore {
    controls::Form*& Slot;
    controls::Form* Before;
    ~Restore() { Slot = Before; }
  };
  controls::Form*& slot = shown_[static_cast<std::size_t>(kind)];
  const Restore restore{slot, std::exchange(slot, &editor)};
  editor.ShowModal();
}

void Dialogs::UnloadAll() noexcept {
  Unload(addressBook_.get());
  for (controls::Form* editor : shown_) Unload(editor);
}

void Dialogs::Unload(controls::Form* form) noexcept {
  if (!form) return;
  session_.Trap(u"KTRVAddressBook: Error occured. Sub: Class_Terminate, Module: clsMain",
                [&] { form->Unload(); });
}

}  // namespace ktrv
