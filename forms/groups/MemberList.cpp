#include "forms/groups/MemberList.h"

#include "common/ScopeExit.h"
#include "data/GroupQueries.h"
#include "forms/groups/JobProgress.h"

namespace ktrv::forms {
namespace {

constexpr StringView kContext =
    u"KTRVAddressBook: Error occurred. Sub:LoadGroupContacts(), Module: frmGroupsNew()";

/// The names, separated by commas, as far as they fit in a label, and the number of others. "&" is
/// doubled, because a label would underline the next character.
String Joined(const std::vector<String>& names) {
  constexpr std::size_t kRoom = 30;
  String text;
  std::size_t joined = 0;
  for (; joined < names.size() && text.size() < kRoom; ++joined) {
    if (joined > 0) text += u", ";
    for (const char16_t unit : names[joined]) text.append(unit == u'&' ? 2 : 1, unit);
  }
  if (joined == names.size()) return text;
  return text + u" and " + ToDecimal(static_cast<std::int64_t>(names.size() - joined)) + u" more";
}

}  // namespace

MemberList::MemberList(Services& services, BookDatabase& database, GroupCommands& commands,
                       GroupStore& store, Display display, controls::Label& count,
                       controls::Label& leftOut)
    : DialogList(services, database, display, kContext),
      commands_(commands),
      store_(store),
      count_(count),
      leftOut_(leftOut) {}

void MemberList::Empty() {
  ContactColumns::Empty(display_.Grid);
  ids_.Clear();
  kinds_.clear();
  state_ = State::Complete;
  ShowCount(0);
}

void MemberList::Load() {
  const bool started = services_.Trap(kContext, false, [&] {
    Begin();
    const String query =
        data::GroupQueries::Members(data::FoldedDialect(database_.DbType), store_.GroupId());
    const std::int64_t members = commands_.Count(GroupCommand::CountMembers, store_.GroupId());
    SetTotal(members);
    // The number of all members, including remote ones, which the SQL query text does not list.
    ShowCount(members);
    // Before the fetch: if another user adds a member in between, saving detects the difference
    // instead of deleting the member.
    store_.Load();
    Open(query);
    return true;
  });
  if (!started) Fail();
}

void MemberList::Fail() {
  ShowFailure(u"The members could not be loaded.");
}

void MemberList::Loaded() {
  const bool taken = services_.Trap(kContext, false, [&] {
    RemoveStrangers();
    ReadIds();
    return true;
  });
  if (!taken) Fail();
}

void MemberList::RemoveStrangers() {
  // The SQL query text joins every membership to a contact by id, so a remote contact's code may
  // select an unrelated contact.
  const TextIndex contacts = store_.TakeContactIds();
  const ContactColumns columns(display_.Grid);
  for (int row = display_.Grid.Rows() - 1; row >= 1; --row) {
    if (display_.Grid.Text(row, columns.Kind()) != ContactKind::Contact) continue;
    if (!contacts.Contains(columns.ReadId(row))) display_.Grid.RemoveItem(row);
  }
}

void MemberList::ReadIds() {
  const ContactColumns columns(display_.Grid);
  ids_.Clear();
  kinds_.clear();
  ids_.Reserve(static_cast<std::size_t>(Count()));
  for (int row = 1; row < display_.Grid.Rows(); ++row) {
    Remember(columns.ReadId(row), columns.ReadKind(row));
  }
}

void MemberList::Remember(const String& id, const String& kind) {
  if (ids_.Add(id)) kinds_.push_back(kind);
}

void MemberList::Take(controls::FlexGrid& source, const std::vector<int>& rows,
                      JobProgress& progress) {
  const ContactColumns from(source);
  const ContactColumns to(display_.Grid);
  std::vector<String> leftOut;
  {
    display_.Grid.SetRedraw(false);
    const ScopeExit redraw([this] { display_.Grid.SetRedraw(true); });
    // Duplicates often come in the order of the list.
    std::size_t guess = 0;
    for (const int row : rows) {
      if (!progress.GoesOn()) break;
      const String id = from.ReadId(row);
      if (const auto found = ids_.Find(id, guess)) {
        guess = *found + 1;
        if (kinds_[*found] != from.ReadKind(row)) leftOut.push_back(from.Read(row).Name);
        continue;
      }
      to.Add(from.Read(row));
      Remember(id, from.ReadKind(row));
    }
  }
  ShowCount(Count());
  ShowLeftOut(leftOut);
}

void MemberList::RemoveSelected() {
  display_.Grid.RemoveSelected();
  // Rebuild from the remaining rows: a database without keys may have returned an id twice.
  ReadIds();
  ShowCount(Count());
  ShowLeftOut({});
}

void MemberList::ShowLeftOut(const std::vector<String>& names) {
  leftOut_.SetVisible(!names.empty());
  if (names.empty()) return;
  leftOut_.SetCaption(ToDecimal(static_cast<std::int64_t>(names.size())) +
                      u" left out, ids already in the list: " + Joined(names));
}

void MemberList::ShowCount(std::int64_t members) {
  count_.SetCaption(ToDecimal(members) + u" Member(s)");
}

}  // namespace ktrv::forms
