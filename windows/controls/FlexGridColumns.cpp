// The columns of FlexGridWindow and what is drawn in them.
#include <algorithm>

#include "windows/base/WideText.h"
#include "windows/controls/FlexGridWindow.h"
#include "windows/controls/Nesting.h"

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

}  // namespace

HWND FlexGridWindow::Header() const {
  return reinterpret_cast<HWND>(Send(LVM_GETHEADER));
}

std::vector<int> FlexGridWindow::VisibleColumns() const {
  std::vector<int> visible;
  bool named = false;
  for (int i = 0; i < grid_.Cols(); ++i) {
    const GridColumn& column = grid_.ColumnAt(i);
    if (!column.Hidden) visible.push_back(i);
    named = named || !column.Key.empty() || !column.Heading.empty();
  }
  // A grid emptied to be filled anew has only unnamed columns for a moment. The old headings stay
  // until the new ones come, so that nothing flickers and the user's order of the columns remains.
  return named ? visible : shown_;
}

const GridColumn* FlexGridWindow::ColumnOf(int listColumn) const {
  if (listColumn < 0 || listColumn >= static_cast<int>(shown_.size())) return nullptr;
  const int column = shown_[static_cast<std::size_t>(listColumn)];
  return column < grid_.Cols() ? &grid_.ColumnAt(column) : nullptr;
}

void FlexGridWindow::ColumnsChanged() {
  if (!Handle()) return;
  const Nesting changing(changing_);
  const std::vector<int> visible = VisibleColumns();
  if (visible == shown_) {
    const bool named = std::any_of(shown_.begin(), shown_.end(), [this](int column) {
      return column < grid_.Cols() && !grid_.ColumnAt(column).Key.empty();
    });
    for (std::size_t i = 0; named && i < shown_.size(); ++i) UpdateColumn(static_cast<int>(i));
    return;
  }
  const RedrawOff off(*this);
  while (Send(LVM_DELETECOLUMN, 0)) {
  }
  shown_ = visible;
  for (std::size_t i = 0; i < shown_.size(); ++i) InsertColumn(static_cast<int>(i));
}

void FlexGridWindow::InsertColumn(int listColumn) {
  LVCOLUMNW insert{};
  insert.mask = LVCF_WIDTH;
  insert.cx = CurrentScale().ToPixels(ColumnOf(listColumn)->Width);
  Send(LVM_INSERTCOLUMNW, static_cast<WPARAM>(listColumn), &insert);
  UpdateColumn(listColumn);
}

void FlexGridWindow::UpdateColumn(int listColumn) {
  const GridColumn* column = ColumnOf(listColumn);
  if (!column) return;
  const int width = CurrentScale().ToPixels(column->Width);
  if (Send(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(listColumn)) != width) {
    Send(LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(listColumn), width);
  }
  std::wstring heading = ToWide(column->Heading);
  LVCOLUMNW change{};
  change.mask = LVCF_TEXT | LVCF_FMT;
  change.fmt = FormatOf(*column);
  change.pszText = heading.data();
  Send(LVM_SETCOLUMNW, static_cast<WPARAM>(listColumn), &change);
  HDITEMW item{};
  item.mask = HDI_FORMAT;
  item.fmt = FormatOf(*column);
  SendMessageW(Header(), HDM_SETITEMW, static_cast<WPARAM>(listColumn),
               reinterpret_cast<LPARAM>(&item));
}

void FlexGridWindow::HeadingChanged(int column) {
  const auto place = std::find(shown_.begin(), shown_.end(), column);
  if (Handle() && place != shown_.end()) UpdateColumn(static_cast<int>(place - shown_.begin()));
}

std::optional<LRESULT> FlexGridWindow::OnHeader(const NMHEADERW& header) {
  switch (header.hdr.code) {
    case HDN_BEGINDRAG:
      return grid_.UserCanMoveColumns ? std::nullopt : std::optional<LRESULT>(TRUE);
    case HDN_DIVIDERDBLCLICKW:
      FitColumn(header.iItem);
      return 0;
    case HDN_ENDTRACKW:
      if (ColumnOf(header.iItem) && header.pitem && header.pitem->mask & HDI_WIDTH) {
        grid_.ColumnAt(shown_[static_cast<std::size_t>(header.iItem)]).Width =
            CurrentScale().ToTwips(header.pitem->cxy);
      }
      return std::nullopt;
    default:
      return std::nullopt;
  }
}

void FlexGridWindow::FitColumn(int listColumn) {
  const GridColumn* column = ColumnOf(listColumn);
  if (!column || column->Picture) return;
  // The list view's own fitting asks for every row; those on the screen are what the user sees.
  LRESULT width = Send(LVM_GETSTRINGWIDTH, 0, ToWide(column->Heading).c_str());
  const int first = static_cast<int>(Send(LVM_GETTOPINDEX)) + 1;
  const int last = std::min(first + static_cast<int>(Send(LVM_GETCOUNTPERPAGE)), grid_.Rows() - 1);
  for (int row = first; row <= last; ++row) {
    const String text = grid_.Text(row, shown_[static_cast<std::size_t>(listColumn)]);
    width = std::max(width, Send(LVM_GETSTRINGWIDTH, 0, ToWide(text).c_str()));
  }
  const LRESULT fitted = width + CurrentScale().Units(16);
  Send(LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(listColumn), static_cast<LPARAM>(fitted));
  grid_.ColumnAt(shown_[static_cast<std::size_t>(listColumn)]).Width =
      CurrentScale().ToTwips(static_cast<int>(fitted));
}

LRESULT FlexGridWindow::OnDraw(const NMLVCUSTOMDRAW& draw) {
  switch (draw.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
      return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT:
      return CDRF_NOTIFYPOSTPAINT;
    case CDDS_ITEMPOSTPAINT:
      DrawPictures(draw.nmcd.hdc, static_cast<int>(draw.nmcd.dwItemSpec));
      return CDRF_DODEFAULT;
    default:
      return CDRF_DODEFAULT;
  }
}

void FlexGridWindow::DrawPictures(HDC target, int item) {
  for (std::size_t i = 0; i < shown_.size(); ++i) {
    const GridColumn* column = ColumnOf(static_cast<int>(i));
    if (!column || !column->Picture || item >= grid_.Rows() - 1) continue;
    const Image image = column->Picture(grid_.Text(item + 1, shown_[i])).first;
    if (image == Image::None) continue;
    RECT cell{};
    cell.top = static_cast<LONG>(i);
    cell.left = i == 0 ? LVIR_LABEL : LVIR_BOUNDS;
    Send(LVM_GETSUBITEMRECT, static_cast<WPARAM>(item), &cell);
    pictures_.Draw(target, image, cell, CurrentScale().Units(16));
  }
}

}  // namespace ktrv::windows
