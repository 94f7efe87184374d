#include "component/Dialogs.h"

#include <utility>

namespace ktrv {
namespace {

constexpr StringView kEnd =
    u"KTRVAddressBook: Error occured. Sub: Class_Terminate, Module: clsMain";

}  // namespace

Dialogs::Dialogs(Session& session) : Editors(session), session_(session) {}

Dialogs::~Dialogs() {
  UnloadAll();
}

forms::frmAddressBook& Dialogs::AddressBook() {
  if (!book_) book_ = std::make_unique<forms::frmAddressBook>(session_.Place(), Editors);
  return *book_;
}

void Dialogs::ShowAddressBook() {
  // The host that is activated when a window is hidden may call for another user.
  Workplace host = session_.Place();
  std::erase_if(former_, [](const auto& book) { return book->IsGone(); });
  // An unloaded window may still run a command, or the host may have destroyed its handle.
  const auto isOnItsWayOut = [this] { return !book_->IsLoaded() && !book_->IsGone(); };
  while (book_ && (isOnItsWayOut() || !BelongsTo(*book_, host))) {
    former_.push_back(std::move(book_));
    former_.back()->Unload();
  }
  const String connection = host.Database.ConnectionString;
  if (!book_) book_ = std::make_unique<forms::frmAddressBook>(std::move(host), Editors);
  if (book_->IsLoaded() || session_.Database.ConnectionString != connection) {
    session_.Database.Close();
  } else {
    book_->Place().Database.TakeConnectionOf(session_.Database);
  }
  book_->Show();
}

bool Dialogs::BelongsTo(forms::frmAddressBook& book, const Workplace& host) {
  const Workplace& own = book.Place();
  return own.Database.ConnectionString == host.Database.ConnectionString &&
         own.Database.DbType == host.Database.DbType && own.User == host.User;
}

void Dialogs::UnloadAll() noexcept {
  if (book_) Unload(book_.get());
  session_.Services.Trap(kEnd, [this] {
    for (controls::Form* dialog : session_.Services.Modal.Open()) Unload(dialog);
  });
}

void Dialogs::Unload(controls::Form* form) noexcept {
  if (!form) return;
  session_.Services.Trap(kEnd, [&] { form->Unload(); });
}

}  // namespace ktrv
