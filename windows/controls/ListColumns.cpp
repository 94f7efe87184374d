#include "windows/controls/ListColumns.h"

#include <algorithm>

#include "windows/base/WideText.h"
#include "windows/controls/VisualStyle.h"

namespace ktrv::windows {

using controls::GridColumn;
using controls::Image;

namespace {

int FormatOf(const GridColumn& column) {
  int format = column.Align == GridColumn::Alignment::Center  ? HDF_CENTER
               : column.Align == GridColumn::Alignment::Right ? HDF_RIGHT
                                                              : HDF_LEFT;
  if (column.HeadingPicture == Image::SortAscending) format |= HDF_SORTUP;
  if (column.HeadingPicture == Image::SortDescending) format |= HDF_SORTDOWN;
  return format | HDF_STRING;
}

/// One third of the selection's color on two thirds of the background's.
COLORREF FaintHighlight() {
  const COLORREF full = GetSysColor(COLOR_HIGHLIGHT);
  const COLORREF back = GetSysColor(COLOR_WINDOW);
  const auto mixed = [](int part, int rest) { return (part + 2 * rest) / 3; };
  return RGB(mixed(GetRValue(full), GetRValue(back)), mixed(GetGValue(full), GetGValue(back)),
             mixed(GetBValue(full), GetBValue(back)));
}

}  // namespace

std::vector<int> ListColumns::Visible() const {
  std::vector<int> visible;
  bool named = false;
  for (int i = 0; i < grid_.Cols(); ++i) {
    const GridColumn& column = grid_.ColumnAt(i);
    if (!column.Hidden) visible.push_back(i);
    named = named || !column.Key.empty() || !column.Heading.empty();
  }
  // Between Reset and the first rows a grid has only unnamed columns. The old headings stay until
  // the new ones arrive, to avoid flicker and to keep the user's column order.
  return named ? visible : shown_;
}

std::optional<int> ListColumns::Find(int listColumn) const {
  if (listColumn < 0 || listColumn >= static_cast<int>(shown_.size())) return std::nullopt;
  const int column = shown_[static_cast<std::size_t>(listColumn)];
  return column < grid_.Cols() ? std::optional(column) : std::nullopt;
}

bool ListColumns::AreNamed() const {
  return std::any_of(shown_.begin(), shown_.end(), [this](int column) {
    return column < grid_.Cols() && !grid_.ColumnAt(column).Key.empty();
  });
}

void ListColumns::Replace() {
  std::vector<int> visible = Visible();
  while (list_.Send(LVM_DELETECOLUMN, 0)) {
  }
  shown_ = std::move(visible);
  for (int place = 0; place < static_cast<int>(shown_.size()); ++place) {
    LVCOLUMNW insert{};
    insert.mask = LVCF_WIDTH;
    insert.cx = list_.CurrentScale().ToPixels(grid_.ColumnAt(*Find(place)).Width);
    list_.Send(LVM_INSERTCOLUMNW, static_cast<WPARAM>(place), &insert);
    UpdateColumn(place);
  }
}

void ListColumns::ShowFirst() {
  if (!shown_.empty() || list_.Send(LVM_GETCOLUMNWIDTH, 0) > 0) return;
  int place = 0;
  for (const GridColumn& column : grid_.FirstColumns) {
    std::wstring heading = ToWide(column.Heading);
    LVCOLUMNW insert{};
    insert.mask = LVCF_WIDTH | LVCF_TEXT | LVCF_FMT;
    insert.fmt = FormatOf(column);
    insert.cx = list_.CurrentScale().ToPixels(column.Width);
    insert.pszText = heading.data();
    list_.Send(LVM_INSERTCOLUMNW, static_cast<WPARAM>(place++), &insert);
  }
}

bool ListColumns::IsMarked(int item) const {
  return grid_.Mark.Has && item >= 0 && item < grid_.Rows() - 1 && grid_.Mark.Has(item + 1);
}

bool ListColumns::HasPicturesBefore() const {
  const auto first = Find(0);
  return first && !grid_.ColumnAt(*first).PictureOf.empty();
}

void ListColumns::Update() {
  for (int place = 0; place < static_cast<int>(shown_.size()); ++place) UpdateColumn(place);
}

void ListColumns::UpdateColumn(int listColumn) {
  const auto place = Find(listColumn);
  if (!place) return;
  const GridColumn& column = grid_.ColumnAt(*place);
  const int width = list_.CurrentScale().ToPixels(column.Width);
  if (list_.Send(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(listColumn)) != width) {
    list_.Send(LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(listColumn), width);
  }
  std::wstring heading = ToWide(column.Heading);
  LVCOLUMNW change{};
  change.mask = LVCF_TEXT | LVCF_FMT;
  change.fmt = FormatOf(column);
  change.pszText = heading.data();
  list_.Send(LVM_SETCOLUMNW, static_cast<WPARAM>(listColumn), &change);
  HDITEMW item{};
  item.mask = HDI_FORMAT;
  item.fmt = FormatOf(column);
  SendMessageW(Header(), HDM_SETITEMW, static_cast<WPARAM>(listColumn),
               reinterpret_cast<LPARAM>(&item));
}

void ListColumns::HeadingChanged(int column) {
  const auto place = std::find(shown_.begin(), shown_.end(), column);
  if (list_.Handle() && place != shown_.end())
    UpdateColumn(static_cast<int>(place - shown_.begin()));
}

std::optional<LRESULT> ListColumns::OnHeader(const NMHEADERW& header) {
  switch (header.hdr.code) {
    case HDN_BEGINDRAG:
      return grid_.UserCanMoveColumns ? std::nullopt : std::optional<LRESULT>(TRUE);
    case HDN_DIVIDERDBLCLICKW:
      Fit(header.iItem);
      return 0;
    case HDN_ENDTRACKW:
      if (const auto column = Find(header.iItem);
          column && header.pitem && header.pitem->mask & HDI_WIDTH) {
        grid_.UserSizesColumn(*column, list_.CurrentScale().ToTwips(header.pitem->cxy));
      }
      return std::nullopt;
    default:
      return std::nullopt;
  }
}

void ListColumns::Fit(int listColumn) {
  const auto place = Find(listColumn);
  if (!place) return;
  const GridColumn& column = grid_.ColumnAt(*place);
  if (column.Picture) return;
  // The list view's own auto-size queries every row. Use only the visible ones.
  LRESULT width = list_.Send(LVM_GETSTRINGWIDTH, 0, ToWide(column.Heading).c_str());
  const int first = static_cast<int>(list_.Send(LVM_GETTOPINDEX)) + 1;
  const int last =
      std::min(first + static_cast<int>(list_.Send(LVM_GETCOUNTPERPAGE)), grid_.Rows() - 1);
  for (int row = first; row <= last; ++row) {
    const String text = grid_.Text(row, *place);
    width = std::max(width, list_.Send(LVM_GETSTRINGWIDTH, 0, ToWide(text).c_str()));
  }
  const bool hasPictures = listColumn == 0 && HasPicturesBefore();
  const LRESULT fitted = width + list_.CurrentScale().Units(hasPictures ? 36 : 16);
  list_.Send(LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(listColumn), static_cast<LPARAM>(fitted));
  grid_.UserSizesColumn(*place, list_.CurrentScale().ToTwips(static_cast<int>(fitted)));
}

LRESULT ListColumns::OnDraw(NMLVCUSTOMDRAW& draw) {
  switch (draw.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
      return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT:
      DrawSelected(draw);
      return CDRF_NOTIFYPOSTPAINT | CDRF_NEWFONT;
    case CDDS_ITEMPOSTPAINT:
      DrawPictureBefore(draw.nmcd.hdc, static_cast<int>(draw.nmcd.dwItemSpec));
      DrawPictures(draw.nmcd.hdc, static_cast<int>(draw.nmcd.dwItemSpec));
      return CDRF_DODEFAULT;
    default:
      return CDRF_DODEFAULT;
  }
}

void ListColumns::DrawSelected(NMLVCUSTOMDRAW& draw) const {
  // uItemState is not reliable for lists that always show their selection.
  const WPARAM item = draw.nmcd.dwItemSpec;
  if (GetFocus() == list_.Handle() || !list_.Send(LVM_GETITEMSTATE, item, LVIS_SELECTED)) return;
  // Without the focus the system paints selected rows in a grey that is hard to see.
  draw.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED);
  const bool highContrast = IsHighContrast();
  draw.clrText = GetSysColor(highContrast ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT);
  draw.clrTextBk = highContrast ? GetSysColor(COLOR_HIGHLIGHT) : FaintHighlight();
}

void ListColumns::DrawPictureBefore(HDC target, int item) {
  if (!HasPicturesBefore() || item >= grid_.Rows() - 1) return;
  const int column = grid_.ColIndex(grid_.ColumnAt(*Find(0)).PictureOf);
  if (column < 0 || !grid_.ColumnAt(column).Picture) return;
  const Image image = grid_.ColumnAt(column).Picture(grid_.Text(item + 1, column)).first;
  if (image == Image::None) return;
  RECT place{};
  place.left = LVIR_ICON;
  list_.Send(LVM_GETITEMRECT, static_cast<WPARAM>(item), &place);
  pictures_.Draw(target, image, place, list_.CurrentScale().Units(16));
}

void ListColumns::DrawPictures(HDC target, int item) {
  for (int place = 0; place < static_cast<int>(shown_.size()); ++place) {
    const auto column = Find(place);
    if (!column || !grid_.ColumnAt(*column).Picture || item >= grid_.Rows() - 1) continue;
    const Image image = grid_.ColumnAt(*column).Picture(grid_.Text(item + 1, *column)).first;
    if (image == Image::None) continue;
    RECT cell{};
    cell.top = place;
    cell.left = place == 0 ? LVIR_LABEL : LVIR_BOUNDS;
    list_.Send(LVM_GETSUBITEMRECT, static_cast<WPARAM>(item), &cell);
    if (*column == 0 && grid_.Mark.Has) cell = DrawMark(target, item, cell);
    pictures_.Draw(target, image, cell, list_.CurrentScale().Units(16));
  }
}

RECT ListColumns::DrawMark(HDC target, int item, RECT cell) {
  RECT rest = cell;
  rest.right = cell.left = (cell.left + cell.right) / 2;
  if (IsMarked(item)) {
    pictures_.Draw(target, grid_.Mark.Picture, cell, list_.CurrentScale().Units(16));
  }
  return rest;
}

}  // namespace ktrv::windows
