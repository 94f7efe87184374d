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
  session_.Trap(u"KTRVAddressBook: Error occured. Sub: Class_Terminate, Module: clsMain", [&] {
    if (addressBook_) addressBook_->Unload();
  });
}

bool Dialogs::AnyLoaded() const {
  return addressBook_ && addressBook_->IsLoaded();
}

}  // namespace ktrv
