#include "component/Dialogs.h"

namespace ktrv {

Dialogs::Dialogs(Session& session) : session_(session) {}

Dialogs::~Dialogs() {
  UnloadAll();
}

forms::frmAddressBook& Dialogs::AddressBook() {
  if (!addressBook_) addressBook_ = std::make_unique<forms::frmAddressBook>(session_);
  return *addressBook_;
}

void Dialogs::UnloadAll() noexcept {
  Unload(addressBook_.get());
  for (controls::Form* dialog : session_.Modal.Open()) Unload(dialog);
}

void Dialogs::Unload(controls::Form* form) noexcept {
  if (!form) return;
  session_.Trap(u"KTRVAddressBook: Error occured. Sub: Class_Terminate, Module: clsMain",
                [&] { form->Unload(); });
}

}  // namespace ktrv
