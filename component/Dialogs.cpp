#include "component/Dialogs.h"

#include <utility>

namespace ktrv {

Dialogs::Dialogs(Session& session) : Editors(session), session_(session) {}

Dialogs::~Dialogs() {
  UnloadAll();
}

forms::frmAddressBook& Dialogs::AddressBook() {
  if (!book_) book_ = std::make_unique<forms::frmAddressBook>(session_.Place(), Editors);
  return *book_;
}

void Dialogs::ShowAddressBook() {
  std::erase_if(former_, [](const auto& book) { return book->IsGone(); });
  // An unloaded window may still run a command, or the host may have destroyed its handle.
  const bool isOnItsWayOut = book_ && !book_->IsLoaded() && !book_->IsGone();
  if (book_ && (isOnItsWayOut || !BelongsToSession(*book_))) {
    former_.push_back(std::move(book_));
    former_.back()->Unload();
  }
  AddressBook();
  if (book_->IsLoaded()) {
    session_.Database.Close();
  } else {
    book_->Place().Database.TakeConnectionOf(session_.Database);
  }
  book_->Show();
}

bool Dialogs::BelongsToSession(forms::frmAddressBook& book) const {
  const Workplace host = session_.Place();
  const Workplace& own = book.Place();
  return own.Database.ConnectionString == host.Database.ConnectionString &&
         own.Database.DbType == host.Database.DbType && own.User == host.User;
}

void Dialogs::UnloadAll() noexcept {
  if (book_) Unload(book_.get());
  for (controls::Form* dialog : session_.Services.Modal.Open()) Unload(dialog);
}

void Dialogs::Unload(controls::Form* form) noexcept {
  if (!form) return;
  session_.Services.Trap(u"KTRVAddressBook: Error occured. Sub: Class_Terminate, Module: clsMain",
                         [&] { form->Unload(); });
}

}  // namespace ktrv
