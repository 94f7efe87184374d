#include "forms/groups/MemberList.h"

#include "data/GroupQueries.h"
#include "forms/groups/JobProgress.h"

namespace ktrv::forms {
namespace {

constexpr StringView kContext =
    u"KTRVAddressBook: Error occurred. Sub:LoadGroupContacts(), Module: frmGroupsNew()";

/// Keeps a grid as it looks while many rows come.
class RedrawPause {
 public:
  explicit RedrawPause(controls::FlexGrid& grid) : grid_(grid) { grid_.SetRedraw(false); }
  ~RedrawPause() { grid_.SetRedraw(true); }
  RedrawPause(const RedrawPause&) = delete;
  RedrawPause& operator=(const RedrawPause&) = delete;

 private:
  controls::FlexGrid& grid_;
};

}  // namespace

MemberList::MemberList(Session& session, GroupCommands& commands, Display display)
    : session_(session),
      commands_(commands),
      display_(display),
      fetch_(session, display.Grid, display.Loading, display.Bar, kContext) {
  fetch_.Changed = [this] {
    if (fetch_.CurrentState() == ContactFetch::State::Complete) Loaded();
    if (Changed) Changed();
  };
}

void MemberList::Empty() {
  ContactColumns::Empty(display_.Grid);
  ids_.Clear();
  complete_ = true;
  ShowCount(0);
}

void MemberList::Load() {
  complete_ = false;
  const bool started = session_.Trap(kContext, false, [&] {
    fetch_.Begin();
    const String query =
        data::GroupQueries::Members(data::FoldedDialect(session_.DbType), session_.GroupId);
    const std::int64_t members = commands_.Count(GroupCommand::CountMembers, session_.GroupId);
    fetch_.SetTotal(members);
    // The whole group, also remote members, which one family does not list.
    ShowCount(members);
    fetch_.Open(query);
    return true;
  });
  if (!started) Fail();
}

void MemberList::Fail() {
  fetch_.Fail(u"The members could not be loaded.");
}

void MemberList::Cancel() {
  fetch_.Cancel();
}

void MemberList::Loaded() {
  ReadIds();
  complete_ = true;
}

void MemberList::ReadIds() {
  const ContactColumns columns(display_.Grid);
  ids_.Clear();
  ids_.Reserve(static_cast<std::size_t>(Count()));
  for (int row = 1; row < display_.Grid.Rows(); ++row) {
    ids_.Add(columns.ReadId(row));
  }
}

void MemberList::Take(controls::FlexGrid& source, const std::vector<int>& rows,
                      JobProgress& progress) {
  const ContactColumns from(source);
  const ContactColumns to(display_.Grid);
  {
    const RedrawPause pause(display_.Grid);
    // Rows that are there already often came in the same order.
    std::size_t guess = 0;
    for (const int row : rows) {
      progress.Advance();
      const String id = from.ReadId(row);
      if (const auto found = ids_.Find(id, guess)) {
        guess = *found + 1;
        continue;
      }
      to.Add(from.Read(row));
      ids_.Add(id);
    }
  }
  ShowCount(Count());
}

void MemberList::RemoveSelected() {
  display_.Grid.RemoveSelected();
  // From the rows that stayed: databases without keys may have given one of them twice.
  ReadIds();
  ShowCount(Count());
}

void MemberList::ShowCount(std::int64_t members) {
  display_.Count.SetCaption(ToDecimal(members) + u" Member(s)");
}

}  // namespace ktrv::forms
