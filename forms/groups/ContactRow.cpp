#include "forms/groups/ContactRow.h"

#include <array>
#include <utility>
#include <vector>

namespace ktrv::forms {

using controls::FlexGrid;
using controls::GridColumn;
using controls::Image;

namespace {

/// In the column order of the list queries. Column 0 is the grid's fixed column.
constexpr std::array<StringView, 7> kKeys = {
    u"FIXED", u"ID", u"NAME", u"MOBILENO", u"COUNTRYCODE", u"CONTACTTYPE", u"MOBILE_DISPLAY"};

std::pair<Image, String> PictureOf(StringView kind) {
  if (kind == ContactKind::Contact) return {Image::Contact, u"Contact"};
  if (kind == ContactKind::Group) return {Image::Group, u"Group"};
  if (kind == ContactKind::RemoteContact) return {Image::RemoteContact, u"Shared Remote Contact"};
  return {Image::None, {}};
}

}  // namespace

ContactColumns::ContactColumns(FlexGrid& grid)
    : grid_(grid),
      id_(grid.ColIndex(u"ID")),
      name_(grid.ColIndex(u"NAME")),
      mobileNo_(grid.ColIndex(u"MOBILENO")),
      countryCode_(grid.ColIndex(u"COUNTRYCODE")),
      kind_(grid.ColIndex(u"CONTACTTYPE")),
      mobileDisplay_(grid.ColIndex(u"MOBILE_DISPLAY")) {}

void ContactColumns::LayOut(FlexGrid& grid) {
  for (std::size_t index = 0; index < kKeys.size(); ++index) {
    GridColumn& column = grid.ColumnAt(static_cast<int>(index));
    column.Key = kKeys[index];
    column.Hidden = true;
    column.HeadingPicture = Image::None;  // newly bound rows are unsorted
  }
  GridColumn& name = grid.ColumnAt(grid.ColIndex(u"NAME"));
  name.Heading = u"Name";
  name.Width = 2250;
  name.Hidden = false;
  GridColumn& mobile = grid.ColumnAt(grid.ColIndex(u"MOBILE_DISPLAY"));
  mobile.Heading = u"Mobile No.";
  mobile.Width = 1650;
  mobile.Hidden = false;
  // Shows the picture of the kind at the start of each row.
  grid.FixedColumnShows = grid.ColIndex(u"CONTACTTYPE");
  GridColumn& kind = grid.ColumnAt(0);
  kind.Width = grid.Mark.Has ? 560 : 350;
  kind.Align = GridColumn::Alignment::Center;
  kind.Hidden = false;
  kind.Picture = PictureOf;
  grid.SetSearchColumns(
      {.Name = grid.ColIndex(u"NAME"), .Number = grid.ColIndex(u"MOBILE_DISPLAY")});
  grid.ColumnsChanged();
}

void ContactColumns::Empty(FlexGrid& grid) {
  constexpr int kHeadingOnly = 1;
  grid.Reset(kHeadingOnly, static_cast<int>(kKeys.size()));
  LayOut(grid);
}

void ContactColumns::ShowOrder(FlexGrid& grid, int sorted, controls::SortOrder order) {
  for (int column = 0; column < grid.Cols(); ++column) {
    const Image picture = column != sorted || order == controls::SortOrder::None ? Image::None
                          : order == controls::SortOrder::Ascending ? Image::SortAscending
                                                                    : Image::SortDescending;
    if (grid.ColumnAt(column).HeadingPicture != picture) grid.SetHeadingPicture(column, picture);
  }
}

controls::SortOrder ContactColumns::OrderShown(const GridColumn& column) {
  if (column.HeadingPicture == Image::SortAscending) return controls::SortOrder::Ascending;
  if (column.HeadingPicture == Image::SortDescending) return controls::SortOrder::Descending;
  return controls::SortOrder::None;
}

String ContactColumns::Trimmed(int row, int column) const {
  String text = grid_.Text(row, column);
  const StringView trimmed = Trim(text);
  if (trimmed.size() != text.size()) text = String(trimmed);
  return text;
}

ContactRow ContactColumns::Read(int row) const {
  return {.Id = Trimmed(row, id_),
          .Name = Trimmed(row, name_),
          .MobileNo = Trimmed(row, mobileNo_),
          .CountryCode = Trimmed(row, countryCode_),
          .MobileDisplay = Trimmed(row, mobileDisplay_),
          .Kind = Trimmed(row, kind_)};
}

bool ContactColumns::Write(const ContactRow& contact) const {
  bool isThere = false;
  for (int row = 1; row < grid_.Rows(); ++row) {
    if (Trimmed(row, id_) != contact.Id || Trimmed(row, kind_) != contact.Kind) continue;
    grid_.SetText(row, name_, contact.Name);
    grid_.SetText(row, mobileNo_, contact.MobileNo);
    grid_.SetText(row, countryCode_, contact.CountryCode);
    grid_.SetText(row, mobileDisplay_, contact.MobileDisplay);
    isThere = true;
  }
  return isThere;
}

void ContactColumns::Add(ContactRow contact) const {
  grid_.AddRow(Cells(std::move(contact)));
}

std::vector<String> ContactColumns::Cells(ContactRow contact) {
  std::vector<String> cells;
  cells.reserve(kKeys.size());
  cells.emplace_back();  // the fixed column
  for (String* text : {&contact.Id, &contact.Name, &contact.MobileNo, &contact.CountryCode,
                       &contact.Kind, &contact.MobileDisplay}) {
    cells.push_back(std::move(*text));
  }
  return cells;
}

String MobileDisplayOf(StringView countryCode, StringView mobileNo) {
  return String(LTrim(String(countryCode) + u" ")) + String(mobileNo);
}

}  // namespace ktrv::forms
