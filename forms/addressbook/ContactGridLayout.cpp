#include "forms/addressbook/ContactGridLayout.h"

#include <array>

#include "forms/ContactKind.h"

namespace ktrv::forms::ContactGridLayout {
namespace {

using Alignment = controls::GridColumn::Alignment;
using controls::Image;

constexpr StringView kMobile = u"MOBILENO";
constexpr StringView kOrganisation = u"ORGANISATION";

struct Design {
  StringView Key;
  StringView Heading;
  int Width;  ///< twips; 0: hidden column
  Alignment Align;
};

// The folder column has the key FOLDERID; the query's column is FOLDER_ID. The e-mail column is
// wider than any window, so it always extends to the right edge of the grid.
constexpr std::array<Design, 10> kColumns = {{
    {u"FIXED", u"", 0, Alignment::Left},
    {kId, u"", 0, Alignment::Left},
    {kName, u"Name", 3000, Alignment::Left},
    {u"SHARED", u"", 0, Alignment::Left},
    {kMobile, u"Mobile No", 2500, Alignment::Left},
    {u"EMAIL", u"Email", 25000, Alignment::Left},
    {u"ADDRESS", u"Address", 3000, Alignment::Left},
    {kOrganisation, u"Organisation", 3000, Alignment::Left},
    {kFolderId, u"", 0, Alignment::Left},
    {kType, u"", 300, Alignment::Center},
}};

/// The type column is too narrow for text, so it shows a picture.
std::pair<Image, String> TypePicture(StringView type) {
  if (type == ContactKind::Contact) return {Image::Contact, u"Contact"};
  if (type == ContactKind::Group) return {Image::Group, u"Group"};
  if (type == ContactKind::RemoteContact) return {Image::RemoteContact, u"Remote contact"};
  return {Image::None, String(type)};
}

}  // namespace

std::vector<controls::GridColumn> FirstColumns() {
  std::vector<controls::GridColumn> columns;
  for (const Design& design : kColumns) {
    if (design.Width == 0) continue;
    columns.push_back({.Key = String(design.Key),
                       .Heading = String(design.Heading),
                       .Width = design.Width,
                       .Align = design.Align});
  }
  return columns;
}

void Apply(controls::FlexGrid& grid) {
  if (IsList(grid)) {
    for (std::size_t i = 0; i < kColumns.size(); ++i) {
      const Design& design = kColumns[i];
      controls::GridColumn& column = grid.ColumnAt(static_cast<int>(i));
      column.Key = design.Key;
      column.Heading = design.Heading;
      if (design.Width > 0) column.Width = design.Width;
      column.Align = design.Align;
      column.Hidden = design.Width == 0;
    }
    grid.ColumnAt(grid.ColIndex(kType)).Picture = TypePicture;
    // The type column is out of sight behind the e-mail column.
    grid.ColumnAt(grid.ColIndex(kName)).PictureOf = kType;
    grid.SetSearchColumns({.Name = grid.ColIndex(kName),
                           .Company = grid.ColIndex(kOrganisation),
                           .Number = grid.ColIndex(kMobile)});
    grid.ColumnsChanged();
  }
  grid.UserCanSort = true;
  grid.UserCanMoveColumns = true;
  grid.Refresh();
}

bool IsList(const controls::FlexGrid& grid) {
  return grid.Cols() == static_cast<int>(kColumns.size());
}

bool HasRows(const controls::FlexGrid& grid) {
  return IsList(grid) && grid.Rows() > 1;
}

std::vector<ListedItem> SelectedItems(const controls::FlexGrid& grid) {
  std::vector<ListedItem> items;
  if (!HasRows(grid)) return items;
  const int id = grid.ColIndex(kId);
  const int type = grid.ColIndex(kType);
  for (const int row : grid.SelectedRows()) {
    items.push_back({grid.Text(row, id), grid.Text(row, type)});
  }
  return items;
}

}  // namespace ktrv::forms::ContactGridLayout
