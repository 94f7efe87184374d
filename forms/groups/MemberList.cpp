#include "forms/groups/MemberList.h"

#include <algorithm>
#include <span>
#include <utility>

#include "common/ScopeExit.h"
#include "data/GroupQueries.h"
#include "forms/groups/JobProgress.h"

namespace ktrv::forms {
namespace {

constexpr StringView kLoadContext =
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

/// ", 1 was there" or ", 2 were there"; empty for 0.
String Also(std::int64_t count, StringView one, StringView many) {
  if (count == 0) return {};
  return u", " + ToDecimal(count) + String(count == 1 ? one : many);
}

}  // namespace

MemberList::MemberList(Services& services, BookDatabase& database, GroupCommands& commands,
                       GroupStore& store, Display display, Labels labels)
    : DialogList(services, database, display, kLoadContext),
      commands_(commands),
      store_(store),
      labels_(labels) {}

void MemberList::Empty() {
  ContactColumns::Empty(display_.Grid);
  ForgetAll();
  history_.Clear();
  state_ = State::Complete;
  ShowCount(0);
}

void MemberList::Load() {
  const bool started = services_.Trap(kLoadContext, false, [&] {
    Begin();
    history_.Clear();
    labels_.Outcome.SetCaption({});
    const String query =
        data::GroupQueries::Members(data::FoldedDialect(database_.DbType), store_.GroupId());
    const std::int64_t members = commands_.Count(GroupCommand::CountMembers, store_.GroupId());
    SetTotal(members);
    // The number of all members, including remote ones, which the SQL query text does not list.
    ShowCount(members);
    // Before the fetch: if another user adds a member in between, saving detects the difference
    // instead of deleting the member.
    store_.Load();
    contacts_ = store_.TakeContactIds();
    arrived_ = 0;
    ForgetAll();
    ids_.Reserve(static_cast<std::size_t>(members));
    Open(query);
    return true;
  });
  if (!started) Fail();
}

void MemberList::Fail() {
  ShowFailure(u"The members could not be loaded.");
}

void MemberList::Arrived() {
  // The SQL query text joins every membership to a contact by id, so a remote contact's code may
  // select an unrelated contact.
  const ContactColumns columns(display_.Grid);
  controls::RowSelection strangers;
  for (int row = arrived_ + 1; row < display_.Grid.Rows(); ++row) {
    const String id = columns.ReadId(row);
    const String kind = columns.ReadKind(row);
    if (kind == ContactKind::Contact && !contacts_.Contains(id)) {
      strangers.Add(row, row);
    } else {
      Remember(id, kind);
    }
  }
  if (strangers.Count() > 0) display_.Grid.RemoveRows(strangers);
  arrived_ = Count();
}

void MemberList::ForgetAll() {
  ids_.Clear();
  known_.clear();
}

std::size_t MemberList::NumberOf(const String& id) {
  if (const auto number = ids_.Find(id)) return *number;
  const std::size_t number = ids_.Count();
  known_.resize(number + 1);  // before, in case memory is short
  ids_.Add(id);
  return number;
}

std::size_t MemberList::IndexOf(StringView kind) {
  constexpr std::array kKnown{ContactKind::Contact, ContactKind::Group, ContactKind::RemoteContact};
  static_assert(kKnown.size() + 1 == kKinds);
  return static_cast<std::size_t>(std::find(kKnown.begin(), kKnown.end(), kind) - kKnown.begin());
}

void MemberList::Remember(const String& id, StringView kind) {
  ++known_[NumberOf(id)].Rows[IndexOf(kind)];
}

void MemberList::Forget(const String& id, std::size_t kind) {
  const auto number = ids_.Find(id);
  if (number && known_[*number].Rows[kind] > 0) --known_[*number].Rows[kind];
}

template <class Job>
void MemberList::Change(const Job& job) {
  try {
    job();
  } catch (...) {
    ShowCount(Count());
    if (Changed) Changed();
    throw;
  }
}

template <class Step, class Counting>
void MemberList::ChangeRows(const Step& step, const Counting& counting) {
  const int before = Count();
  try {
    step();
  } catch (...) {
    if (Count() != before) counting();
    throw;
  }
  counting();
}

auto MemberList::WithoutPainting() {
  display_.Grid.SetRedraw(false);
  return ScopeExit([this] { display_.Grid.SetRedraw(true); });
}

void MemberList::Take(controls::FlexGrid& source, const std::vector<int>& rows,
                      JobProgress& progress) {
  Change([&] { TakeRows(source, rows, progress); });
}

void MemberList::TakeRows(controls::FlexGrid& source, const std::vector<int>& rows,
                          JobProgress& progress) {
  const ContactColumns from(source);
  const ContactColumns to(display_.Grid);
  ids_.Reserve(ids_.Count() + rows.size());
  std::vector<String>& added = history_.Begin().Added;
  std::vector<String> leftOut;
  std::int64_t present = 0;
  std::int64_t withoutNumber = 0;
  bool stopped = false;
  {
    const auto noPainting = WithoutPainting();
    // Duplicates often come in the order of the list.
    std::size_t guess = 0;
    for (const int row : rows) {
      if (stopped = !progress.GoesOn(); stopped) break;
      const String id = from.ReadId(row);
      const auto found = ids_.Find(id, guess);
      if (found) guess = *found + 1;
      if (found && known_[*found].Rows != Known().Rows) {
        if (known_[*found].Rows[IndexOf(from.ReadKind(row))] > 0) {
          ++present;
        } else {
          leftOut.push_back(from.Read(row).Name);
        }
        continue;
      }
      ContactRow contact = from.Read(row);
      if (contact.Kind != ContactKind::Group && contact.MobileNo.empty()) ++withoutNumber;
      const std::size_t number = found ? *found : NumberOf(id);
      int& count = known_[number].Rows[IndexOf(contact.Kind)];
      added.push_back(id);
      ChangeRows([&] { to.Add(std::move(contact)); }, [&] { ++count; });
    }
  }
  const auto count = static_cast<std::int64_t>(added.size());
  history_.End();
  if (count > 0) ContactColumns::ShowNoOrder(display_.Grid);
  ShowLeftOut(leftOut);
  ShowChange((stopped ? u"Stopped: " : u"") + ToDecimal(count) + u" added" +
             Also(present, u" was in the list already", u" were in the list already") +
             Also(withoutNumber, u" has no number", u" have no number"));
}

void MemberList::RemoveSelected(JobProgress& progress) {
  const controls::RowSelection rows = display_.Grid.Selection();
  Remove(rows, progress);
}

void MemberList::RemoveAll(JobProgress& progress) {
  controls::RowSelection all;
  all.Add(1, Count());
  Remove(all, progress);
}

void MemberList::Remove(const controls::RowSelection& rows, JobProgress& progress) {
  if (rows.Count() == 0) return;
  Change([&] { RemoveAndNote(rows, progress); });
}

void MemberList::RemoveAndNote(const controls::RowSelection& rows, JobProgress& progress) {
  const ContactColumns columns(display_.Grid);
  std::vector<MemberHistory::Removed> gone;
  gone.reserve(static_cast<std::size_t>(rows.Count()));
  for (const int row : rows.Rows()) {
    if (!progress.GoesOn()) return Say(u"Stopped. Nothing was removed.");
    gone.push_back({row, columns.Read(row)});
  }
  const auto count = static_cast<std::int64_t>(gone.size());
  const int first = rows.Ranges().front().First;
  history_.Begin().Gone = std::move(gone);
  RemoveRows(rows, progress);
  if (Count() > 0) GoTo(std::min(first, Count()));
  ShowLeftOut({});
  ShowChange(ToDecimal(count) + u" removed");
}

void MemberList::RemoveRows(const controls::RowSelection& rows, JobProgress& progress) {
  const auto noPainting = WithoutPainting();
  const ContactColumns columns(display_.Grid);
  std::vector<int> left = rows.Rows();
  while (!left.empty()) {
    // The last ones, so that the numbers of the others stay the same.
    const std::size_t others = left.size() - std::min(left.size(), portion_);
    controls::RowSelection portion;
    std::vector<std::pair<String, std::size_t>> gone;
    gone.reserve(left.size() - others);
    for (std::size_t i = others; i < left.size(); ++i) {
      portion.Add(left[i], left[i]);
      gone.emplace_back(columns.ReadId(left[i]), IndexOf(columns.ReadKind(left[i])));
    }
    left.resize(others);
    ChangeRows([&] { display_.Grid.RemoveRows(portion); },
               [&] {
                 for (const auto& [id, kind] : gone) Forget(id, kind);
               });
    for (std::size_t row = 0; row < gone.size(); ++row) progress.GoesOn();
  }
}

void MemberList::Undo(JobProgress& progress) {
  if (history_.IsEmpty()) return;
  Change([&] { UndoLast(progress); });
}

void MemberList::UndoLast(JobProgress& progress) {
  const MemberHistory::Change& change = history_.Last();
  progress.Extend(static_cast<std::int64_t>(change.Added.size() + change.Gone.size()));
  String outcome;
  try {
    outcome =
        change.Gone.empty() ? RemoveAdded(change.Added, progress) : PutBack(change.Gone, progress);
  } catch (const Stopped&) {
    return Say(u"Stopped. Nothing was undone.");
  }
  MemberHistory::Change undone = history_.TakeLast();
  for (MemberHistory::Removed& removed : undone.Gone) {
    progress.GoesOn();
    removed.Contact = {};  // to release a million texts takes time, too
  }
  ShowLeftOut({});
  ShowChange(u"Undone: " + outcome);
}

String MemberList::RemoveAdded(const std::vector<String>& ids, JobProgress& progress) {
  std::vector<bool> isAdded(known_.size());
  std::size_t guess = 0;
  for (const String& id : ids) {
    progress.Advance();
    const auto number = ids_.Find(id, guess);
    if (!number) continue;
    isAdded[*number] = true;
    guess = *number + 1;
  }
  progress.Extend(Count());
  const ContactColumns columns(display_.Grid);
  controls::RowSelection rows;
  for (int row = 1; row < display_.Grid.Rows(); ++row) {
    progress.Advance();
    const auto number = ids_.Find(columns.ReadId(row), guess);
    if (!number) continue;
    if (isAdded[*number]) rows.Add(row, row);
    guess = *number + 1;
  }
  RemoveRows(rows, progress);
  return ToDecimal(static_cast<std::int64_t>(ids.size())) + u" removed";
}

String MemberList::PutBack(const std::vector<MemberHistory::Removed>& gone, JobProgress& progress) {
  std::vector<const MemberHistory::Removed*> back;
  back.reserve(gone.size());
  std::vector<bool> comes(known_.size() * kKinds);
  std::size_t guess = 0;
  for (const MemberHistory::Removed& removed : gone) {
    progress.Advance();
    const std::size_t kind = IndexOf(removed.Contact.Kind);
    if (const auto number = ids_.Find(removed.Contact.Id, guess)) {
      const std::size_t place = *number * kKinds + kind;
      if (known_[*number].Rows[kind] > 0 || comes[place]) continue;
      comes[place] = true;
      guess = *number + 1;
    }
    back.push_back(&removed);
  }
  if (!back.empty()) {
    const int first = std::min(back.front()->Row, Count() + 1);
    InsertRows(back, progress);
    ContactColumns::ShowNoOrder(display_.Grid);
    GoTo(first);
  }
  return ToDecimal(static_cast<std::int64_t>(back.size())) + u" back in the list";
}

void MemberList::InsertRows(const std::vector<const MemberHistory::Removed*>& back,
                            JobProgress& progress) {
  const auto noPainting = WithoutPainting();
  for (std::size_t begin = 0; begin < back.size(); begin += portion_) {
    const std::span portion =
        std::span(back).subspan(begin).first(std::min(portion_, back.size() - begin));
    std::vector<controls::PlacedRow> rows;
    rows.reserve(portion.size());
    for (const MemberHistory::Removed* removed : portion) {
      rows.push_back({removed->Row, ContactColumns::Cells(removed->Contact)});
    }
    ChangeRows([&] { display_.Grid.InsertRows(std::move(rows)); },
               [&] {
                 for (const MemberHistory::Removed* removed : portion) {
                   Remember(removed->Contact.Id, removed->Contact.Kind);
                 }
               });
    for (std::size_t row = 0; row < portion.size(); ++row) progress.GoesOn();
  }
}

void MemberList::GoTo(int row) {
  display_.Grid.SetRow(row);
  display_.Grid.ShowRow(row);
}

bool MemberList::Has(StringView kind, StringView id) const {
  if (!IsComplete()) return false;
  const auto found = ids_.Find(id);
  return found && known_[*found].Rows[IndexOf(kind)] > 0;
}

void MemberList::ShowChange(const String& outcome) {
  ShowCount(Count());
  Say(outcome);
  if (Changed) Changed();
}

void MemberList::ShowLeftOut(const std::vector<String>& names) {
  labels_.LeftOut.SetVisible(!names.empty());
  if (names.empty()) return;
  labels_.LeftOut.SetCaption(ToDecimal(static_cast<std::int64_t>(names.size())) +
                             u" left out, ids already in the list: " + Joined(names));
}

void MemberList::ShowCount(std::int64_t members) {
  labels_.Count.SetCaption(ToDecimal(members) + u" Member(s)");
}

}  // namespace ktrv::forms
