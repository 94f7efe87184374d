#include "forms/addressbook/ContactList.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "data/AddressBookQueries.h"
#include "forms/ContactKind.h"
#include "forms/addressbook/ContactGridLayout.h"
#include "forms/addressbook/CurrentNode.h"

namespace ktrv::forms {
namespace {

namespace Queries = data::AddressBookQueries;
using Counted = Queries::Count;
using controls::Image;
using controls::MousePointer;
using controls::SortOrder;

constexpr StringView kLoadContext =
    u"KTRVAddressBook: Error occurred. Sub: LoadContacts, Module: frmAddressBook";
constexpr int kTextPanel = 1;
constexpr int kCountPanel = 3;
constexpr int kCountPanelWidth = 3000;  // twips

/// The id of a node as the integer parameter of the counting statements. \throws Error
/// TypeMismatch, Overflow
std::int32_t IdNumber(StringView id) {
  const auto number = IsDecimalDigits(id) ? ParseInteger(id) : std::nullopt;
  if (!number) throw Error(ErrorNumber::TypeMismatch);
  if (*number > std::numeric_limits<std::int32_t>::max()) {
    throw Error(ErrorNumber::Overflow);
  }
  return static_cast<std::int32_t>(*number);
}

}  // namespace

ContactList::ContactList(Services& services, BookDatabase& database, Display display)
    : BackgroundList(database), services_(services), display_(display), counts_(database) {}

void ContactList::Prepare() {
  database_.Open();
  counts_.Prepare(Queries::Counts());
}

void ContactList::Load(StringView nodeKey) {
  const bool loaded = services_.Trap(kLoadContext, false, [&] {
    display_.Window.SetPointer(MousePointer::Hourglass);
    KeepPlace(nodeKey);
    Clear();
    if (LoadStarts) LoadStarts();
    display_.Status.SetPanelText(kTextPanel, u"Loading Contacts...");
    HideProgress();
    display_.Window.SetPointer(MousePointer::Default);
    RemoveCountPanel();
    Open(nodeKey);
    return true;
  });
  if (!loaded) ShowFailure();
}

void ContactList::KeepPlace(StringView nodeKey) {
  if (nodeKey != nodeKey_) {
    nodeKey_ = nodeKey;
    place_.reset();
  } else if (ContactGridLayout::HasRows(display_.Grid) &&
             (!place_ || display_.Grid.ChosenRow() > 0)) {
    // Before its rows are there, a list that is loaded again keeps the place of the one before.
    place_.emplace(display_.Grid);
  }
}

void ContactList::Clear() {
  Drop();
  total_ = 0;
  sortColumn_ = ContactGridLayout::kName;
}

void ContactList::Drop() {
  display_.Grid.Reset(2, 2);
  rows_.reset();
  state_ = State::Idle;
}

void ContactList::Open(StringView nodeKey) {
  const auto query = Count(nodeKey);
  if (query) Fetch(*query);
  ShowTotal();
  display_.Status.AddPanel({.Width = kCountPanelWidth});
  if (total_ > 0) {
    display_.Progress.PlaceIn(display_.Status, kCountPanel);
    display_.Progress.SetVisible(true);
    display_.Progress.SetRange(0, total_);
    display_.Progress.SetValue(0);
    display_.Progress.SetMarquee(true);  // until the engine has sorted the rows
  }
  // The rows arrive later. The grid gets its columns with the first rows.
  display_.Grid.Bind(rows_.get());
}

std::optional<String> ContactList::Count(StringView nodeKey) {
  const auto dialect = data::ExactDialect(database_.DbType);
  const StringView kind = NodeKey::KindOf(nodeKey);
  const StringView id = NodeKey::IdOf(nodeKey);
  if (nodeKey == NodeKey::Shared) {
    total_ = RowsOf(Counted::FolderContacts, u"0") + RowsOf(Counted::FolderGroups, u"0");
    return Queries::RootItems(dialect);
  }
  if (kind == NodeKey::SharedFolder) {
    total_ = RowsOf(Counted::FolderContacts, id) + RowsOf(Counted::FolderGroups, id);
    return Queries::FolderItems(dialect, id);
  }
  if (kind == NodeKey::RemoteFolder) {
    total_ = RowsOf(Counted::RemoteContacts, id);
    return Queries::RemoteFolderItems(id);
  }
  if (kind == NodeKey::SharedGroup) {
    total_ = RowsOf(Counted::GroupMembers, id);
    return Queries::GroupItems(dialect, id);
  }
  return std::nullopt;
}

std::int32_t ContactList::RowsOf(Counted which, StringView id) {
  const std::int64_t number = IdNumber(id);
  if (!counts_.ArePrepared()) Prepare();
  return static_cast<std::int32_t>(counts_.Count(which, number));
}

void ContactList::FetchProgress(std::int64_t rows) {
  services_.Trap(kLoadContext, [&] {
    display_.Progress.SetMarquee(false);
    display_.Progress.SetValue(rows);
    display_.Grid.RowsArrived();
    if (place_) place_->RowsCame(display_.Grid);
    if (RowsCame) RowsCame(false);
  });
}

void ContactList::FetchComplete(const Error* error) {
  display_.Grid.SetRedraw(false);
  services_.Trap(kLoadContext, [&] { FinishLoad(error == nullptr); });
  display_.Grid.SetRedraw(true);
  if (!error) return;
  services_.Logger.LogError(services_.LogFilePath, *error, kLoadContext, 0, true);
  display_.Status.SetPanelText(kTextPanel, ContactGridLayout::HasRows(display_.Grid)
                                               ? u"Not all contacts could be loaded."
                                               : u"Contacts could not be loaded.");
}

void ContactList::FinishLoad(bool isComplete) {
  HideProgress();
  const int host = display_.Progress.HostPanel();
  if (host > kTextPanel && host <= display_.Status.PanelCount()) {
    display_.Status.SetPanelText(host, u"");
  }
  RemoveCountPanel();
  display_.Grid.DataRefresh();
  MoveIndicator(ContactGridLayout::kName, SortOrder::Ascending);
  if (place_) {
    place_->RowsAreThere(display_.Grid, isComplete);
    if (isComplete) place_.reset();
  } else if (display_.Grid.Row() > 0) {
    display_.Grid.ShowRow(display_.Grid.Row());
  }
  if (RowsCame) RowsCame(true);
}

void ContactList::ChangeSortOrder(StringView columnKey, SortOrder order) {
  services_.Trap(u"KTRVAddressBook: Error occurred. Sub:ChangeSortOrder(), Module: frmAddressBook",
                 [&] {
                   if (ToUpperAscii(columnKey) == u"DUMMY") return;
                   display_.Grid.Sort(display_.Grid.ColIndex(columnKey), order);
                   MoveIndicator(columnKey, order);
                   // It knows the rows that have come by their place.
                   if (IsLoading()) place_.reset();
                 });
}

void ContactList::MoveIndicator(StringView columnKey, SortOrder order) {
  controls::FlexGrid& grid = display_.Grid;
  const int former = grid.ColIndex(sortColumn_);
  if (former >= 0) grid.SetHeadingPicture(former, Image::None);
  sortColumn_ = columnKey;
  const int column = grid.ColIndex(columnKey);
  if (column < 0) return;
  grid.SetHeadingPicture(
      column, order == SortOrder::Descending ? Image::SortDescending : Image::SortAscending);
}

void ContactList::Add(const SavedContact& contact, StringView folderId) {
  controls::FlexGrid& grid = display_.Grid;
  if (!ContactGridLayout::IsList(grid)) return;
  String row;
  for (const StringView text :
       {StringView(), StringView(contact.Id), StringView(contact.Name), StringView(u"1"),
        StringView(contact.Mobile), StringView(contact.Email), StringView(contact.Address),
        StringView(contact.Organisation), folderId, ContactKind::Contact}) {
    // A tab in a name would shift the following cells.
    String cell(text);
    std::replace(cell.begin(), cell.end(), u'\t', u' ');
    row += cell + u"\t";
  }
  row.pop_back();
  grid.AddItem(row);
  ++total_;
  if (state_ != State::Failed) ShowTotal();  // an incomplete list keeps its message
  grid.SetRow(grid.Rows() - 1);
  grid.ShowRow(grid.Row());
}

void ContactList::ShowTotal() {
  display_.Status.SetPanelText(kTextPanel, ToDecimal(total_) + u" item(s)");
}

void ContactList::Close() {
  nodeKey_.clear();
  place_.reset();
  Drop();
  counts_.Release();
}

void ContactList::ShowFailure() {
  display_.Window.SetPointer(MousePointer::Default);
  HideProgress();
  RemoveCountPanel();
  Drop();
  display_.Status.SetPanelText(kTextPanel, u"Contacts could not be loaded.");
}

void ContactList::HideProgress() {
  display_.Progress.SetVisible(false);
  display_.Progress.SetMarquee(false);
}

void ContactList::RemoveCountPanel() {
  if (display_.Status.PanelCount() == kCountPanel) display_.Status.RemovePanel(kCountPanel);
}

}  // namespace ktrv::forms
