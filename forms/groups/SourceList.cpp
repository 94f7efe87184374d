#include "forms/groups/SourceList.h"

#include <limits>
#include <utility>

#include "forms/groups/ContactRow.h"

namespace ktrv::forms {

using data::GroupQueries::Purpose;

namespace {

/// FillSelector logs under this name too.
constexpr StringView kContext =
    u"KTRVAddressBook: Error occurred. Sub:LoadFolderContacts(), Module: frmGroupsNew()";
constexpr StringView kNotLoaded = u"The contacts could not be loaded.";
constexpr StringView kRemote = u"R";

}  // namespace

SourceList::SourceList(Services& services, BookDatabase& database, GroupCommands& commands,
                       controls::ComboBox& selector, Display display)
    : DialogList(services, database, display, kContext), commands_(commands), selector_(selector) {}

bool SourceList::FillSelector() {
  selector_.Clear();
  return services_.Trap(kContext, false, [&] {
    selector_.AddItem(u"Shared Contacts", 0);
    auto folders = commands_.Execute(GroupCommand::Folders);
    for (; !folders.EndOfFile(); folders.MoveNext()) {
      // A folder that fails does not affect the others.
      services_.Trap(kContext, [&] { AddFolder(folders); });
    }
    return true;
  });
}

void SourceList::AddFolder(const database::Recordset& folder) {
  using Limits = std::numeric_limits<std::int32_t>;
  const std::int64_t id = ToInteger(folder.Field(u"ID"));
  // Truncated, it would be the id of another folder.
  if (id < Limits::min() || id > Limits::max()) throw Error(ErrorNumber::Overflow, u"Overflow");
  selector_.AddItem(ToText(folder.Field(u"NAME")), static_cast<std::int32_t>(id));
}

void SourceList::Load(Purpose purpose, StringView folderId) {
  const bool started = services_.Trap(kContext, false, [&] {
    const StringView id = LeadingNumber(folderId) == 0 ? u"0" : folderId;
    Leave(id);
    Begin();
    ChooseSource(id);
    const auto dialect = data::FoldedDialect(database_.DbType);
    query_ = kind_ == kRemote ? data::GroupQueries::RemoteCandidates(dialect, purpose, id)
                              : data::GroupQueries::SharedCandidates(dialect, purpose, id);
    SetTotal(CountRows(purpose, id));
    Open(query_);
    return true;
  });
  if (!started) Fail();
}

void SourceList::Leave(StringView folderId) {
  const controls::FlexGrid& grid = display_.Grid;
  if (!shown_.empty() && IsComplete() && !isReturning_) {
    Left left{ListPlace(grid), {}, controls::SortOrder::None};
    for (int column = 0; column < grid.Cols(); ++column) {
      const controls::GridColumn& design = grid.ColumnAt(column);
      const auto order = ContactColumns::OrderShown(design);
      if (order == controls::SortOrder::None) continue;
      left.SortedBy = design.Key;
      left.Order = order;
    }
    left_.insert_or_assign(shown_, std::move(left));
  }
  shown_ = folderId;
  isReturning_ = false;
}

void SourceList::Loaded() {
  services_.Trap(kContext, [&] {
    const auto left = left_.find(shown_);
    if (left == left_.end()) return;
    isReturning_ = true;
    if (left->second.Order == controls::SortOrder::None) return Sorted();
    display_.Grid.SortInSlices(display_.Grid.ColIndex(left->second.SortedBy), left->second.Order);
  });
}

void SourceList::Sorted() {
  if (!std::exchange(isReturning_, false)) return;
  if (auto left = left_.extract(shown_)) left.mapped().Place.RowsAreThere(display_.Grid, true);
}

void SourceList::Fail() {
  ContactColumns::Empty(display_.Grid);
  const bool known = data::FoldedDialect(database_.DbType) != data::Dialect::None;
  ShowFailure(known ? String(kNotLoaded)
                    : u"No lists for database type " + database_.DbType + u".");
}

bool SourceList::Find(StringView text, int startRow) {
  controls::FlexGrid& grid = display_.Grid;
  return Show(grid.FindRow(text, startRow, grid.ColIndex(u"NAME")));
}

bool SourceList::FindElsewhere(StringView text, int row) {
  return Show(display_.Grid.FindNext(text, row, false));
}

bool SourceList::Show(int row) {
  if (row < 1) return false;
  display_.Grid.SetRow(row);
  display_.Grid.ShowRow(row);
  return true;
}

void SourceList::ChooseSource(StringView folderId) {
  if (folderId == u"0") {
    kind_ = u"S";
    name_ = u"SHARED";
    return;
  }
  kind_.clear();
  name_.clear();
  const auto folder = commands_.Execute(GroupCommand::Folder, {String(folderId)});
  kind_ = Trim(ToText(folder.Field(u"TYPE")));
  name_ = ToText(folder.Field(u"NAME"));
}

std::int64_t SourceList::CountRows(Purpose purpose, StringView folderId) {
  const String id(folderId);
  std::int64_t rows = commands_.Count(
      kind_ == kRemote ? GroupCommand::CountRemoteContacts : GroupCommand::CountFolderContacts, id);
  if (purpose == Purpose::PickRecipients)
    rows += commands_.Count(GroupCommand::CountFolderGroups, id);
  return rows;
}

}  // namespace ktrv::forms
