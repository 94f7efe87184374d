#include "component/Dialogs.h"

#include <tuple>
#include <utility>

namespace ktrv {

Dialogs::Dialogs(Session& session) : Editors(session), session_(session) {}

Dialogs::~Dialogs() {
  UnloadAll();
}

forms::frmAddressBook& Dialogs::AddressBook() {
  if (!book_) book_ = std::make_unique<Book>(session_, Editors);
  return book_->Window;
}

void Dialogs::ShowAddressBook() {
  std::erase_if(former_, [](const auto& book) { return book->Window.IsGone(); });
  // A window on its way out may be in the middle of a command, or the host may have destroyed it.
  const bool isOnItsWayOut = book_ && !book_->Window.IsLoaded() && !book_->Window.IsGone();
  if (book_ && (isOnItsWayOut || !BelongsToSession(*book_))) {
    former_.push_back(std::move(book_));
    former_.back()->Window.Unload();
  }
  AddressBook();
  if (book_->Window.IsLoaded()) {
    session_.CloseConnection();
  } else {
    book_->Own.Database.TakeConnectionOf(session_.Database);
  }
  book_->Window.Show();
}

bool Dialogs::BelongsToSession(const Book& book) const {
  const auto who = [](const Session& values) {
    return std::tie(values.SessionConnectionString, values.DbType, values.RunAt,
                    values.SessionUserId, values.IsAdmin);
  };
  return who(book.Own) == who(session_);
}

void Dialogs::UnloadAll() noexcept {
  if (book_) Unload(&book_->Window);
  for (controls::Form* dialog : session_.Modal.Open()) Unload(dialog);
}

void Dialogs::Unload(controls::Form* form) noexcept {
  if (!form) return;
  session_.Trap(u"KTRVAddressBook: Error occured. Sub: Class_Terminate, Module: clsMain",
                [&] { form->Unload(); });
}

}  // namespace ktrv
