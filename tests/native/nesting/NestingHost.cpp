#include "tests/native/nesting/NestingHost.h"

#include <stdexcept>
#include <utility>

namespace ktrv::tests {
namespace {

constexpr StringView kLog = u"log";

void Fill(AddressBookDatabase& database, const String& prefix) {
  const auto named = [&](StringView name) { return u"'" + prefix + String(name) + u"'"; };
  database.Run({
      u"BEGIN",
      u"DELETE FROM SMS_USERS",
      u"DELETE FROM SMS_ABFOLDERS",
      u"DELETE FROM SMS_ABCONTACTS",
      u"DELETE FROM SMS_ABGROUPS",
      u"DELETE FROM SMS_ABGROUPMAPS",
      u"DELETE FROM SQLITE_SEQUENCE",
      u"INSERT INTO SMS_USERS (ID, NAME, ADMIN, DISABLED, DELETED) VALUES (1, 'A', 1, 0, 0),"
      u" (2, 'B', 0, 0, 0), (3, 'C', 1, 0, 0)",
      u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, PARENTFOLDERID) VALUES (1, 'S', " +
          named(u"Staff") + u", 0)",
      u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MOBILENO) VALUES (1, 0, " +
          named(u"Ann") + u", '70'), (2, 0, " + named(u"Bert") + u", '71'), (3, 1, " +
          named(u"Cora") + u", '72')",
      u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (5, " + named(u"Boat") +
          u", 0), (6, " + named(u"Crew") + u", 0)",
      u"INSERT INTO SMS_ABGROUPMAPS VALUES (5, '1', 'S'), (6, '2', 'S')",
      u"COMMIT",
  });
}

std::string Line(std::string_view name, StringView value) {
  return std::string(name) + ": " + ToUtf8(value);
}

}  // namespace

void NestingHost::Databases::Reset() {
  Fill(First, u"");
  Fill(Second, u"Other ");
}

NestingHost::NestingHost(Databases& places)
    : databases(places),
      session(screen, system,
              {[this](StringView) -> database::Driver& { return databases.First.Driver(); },
               screen.Dispatcher.Post()}) {
  databases.Reset();
  constexpr std::int32_t kServer = 1;
  if (main->Init({}, databases.First.ConnectionString(), kServer, u"SQL", kLog) != 1) {
    throw std::logic_error("the first database cannot be reached");
  }
}

void NestingHost::ActAt(int moment, const Act& act) {
  moment_ = moment;
  act_ = &act;
}

void NestingHost::Think() {
  if (++moments_ != moment_ || !act_) return;
  left_ = std::exchange(act_, nullptr)->Do(*this);
}

void NestingHost::CancelNext() {
  screen.PlayModal([](controls::Form& form) { form.UserCloses(); });
}

void NestingHost::Come(forms::frmGroupsNew& dialog) {
  const bool came = screen.WaitUntil(
      [&] { return !dialog.Sources().IsLoading() && !dialog.Members().IsLoading(); });
  if (!came) throw std::logic_error("the lists of the group dialog did not come");
}

void NestingHost::AnswerNext(std::int16_t answer) {
  screen.WhileAsked([this, answer] {
    Think();
    screen.Answer(answer);
  });
}

forms::frmAddressBook& NestingHost::OpenBook() {
  if (main->LoadAddressBook(kAdministrator) != 1) throw std::logic_error("no address book");
  book_ = &dialogs.AddressBook();
  WaitForBook();
  return *book_;
}

void NestingHost::WaitForBook() {
  if (!screen.WaitUntil([&] { return !book_->List().IsLoading() && !book_->IsDeleting(); })) {
    throw std::logic_error("the address book's list did not come");
  }
}

void NestingHost::Show(StringView key) {
  book_->tvwContacts.UserClicks(*book_->tvwContacts.Find(key));
  WaitForBook();
  book_->tvwContacts.UserFocuses(true);
}

void NestingHost::SelectRowOf(StringView name) {
  book_->tvwContacts.UserFocuses(false);
  book_->vsfContacts.UserFocuses(true);
  for (int row = 1; row < book_->vsfContacts.Rows(); ++row) {
    if (Trim(book_->vsfContacts.Text(row, 2)) != name) continue;
    book_->vsfContacts.UserSelects({row}, row);
    return;
  }
  throw std::logic_error("no row of that name");
}

NestingHost::Outcome NestingHost::Contact(std::int32_t returned) const {
  return {Line("returned", ToDecimal(returned)), Line("contact", main->NewContactId()),
          Line("contact type", main->NewContactType())};
}

NestingHost::Outcome NestingHost::Group(std::int32_t returned) const {
  return {Line("returned", ToDecimal(returned)), Line("group", main->NewGroupId()),
          Line("group name", main->NewGroupName()), Line("group type", main->NewGroupType())};
}

NestingHost::Outcome NestingHost::Recipients(std::int32_t returned) const {
  Outcome lines{Line("returned", ToDecimal(returned)), Line("names", main->strContactsName())};
  for (std::int32_t item = 1; item <= main->SelectedRecipients()->Count(); ++item) {
    lines.push_back(Line("recipient", main->SelectedRecipients()->Item(item)));
  }
  for (std::int32_t item = 1; item <= main->SelectedMobileNos()->Count(); ++item) {
    lines.push_back(Line("number", main->SelectedMobileNos()->Item(item)));
  }
  return lines;
}

NestingHost::Outcome NestingHost::Book() {
  WaitForBook();
  Outcome lines;
  if (!book_->IsLoaded()) return lines;
  for (int at = 1; at <= static_cast<int>(book_->tvwContacts.Count()); ++at) {
    const auto& node = book_->tvwContacts.At(at);
    lines.push_back(Line("node", node.Key + u" " + node.Text));
  }
  for (int row = 1; row < book_->vsfContacts.Rows(); ++row) {
    if (book_->vsfContacts.Cols() > 2)
      lines.push_back(Line("row", book_->vsfContacts.Text(row, 2)));
  }
  return lines;
}

int NestingHost::Records() const {
  const String log = system.TextOf(kLog);
  int count = 0;
  for (std::size_t at = log.find(u"Error Number"); at != String::npos;
       at = log.find(u"Error Number", at + 1)) {
    ++count;
  }
  return count;
}

NestingHost::Outcome NestingHost::Rows(AddressBookDatabase& database) {
  Outcome lines;
  for (const StringView table :
       {u"SMS_ABFOLDERS", u"SMS_ABCONTACTS", u"SMS_ABGROUPS", u"SMS_ABGROUPMAPS"}) {
    for (const String& row :
         database.Rows(u"SELECT * FROM " + String(table) + u" ORDER BY 1, 2, 3")) {
      lines.push_back(Line(ToUtf8(table), row));
    }
  }
  return lines;
}

}  // namespace ktrv::tests
