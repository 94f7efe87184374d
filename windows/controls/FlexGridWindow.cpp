#include "windows/controls/FlexGridWindow.h"

#include <algorithm>

#include "windows/base/WideText.h"
#include "windows/controls/FormWindow.h"
#include "windows/controls/Keys.h"
#include "windows/controls/Nesting.h"

namespace ktrv::windows {

using controls::GridColumn;
using controls::MouseButton;

FlexGridWindow::RedrawOff::RedrawOff(FlexGridWindow& grid) : grid_(grid) {
  if (grid_.redrawOff_++ == 0) grid_.Send(WM_SETREDRAW, FALSE);
}

FlexGridWindow::RedrawOff::~RedrawOff() {
  if (--grid_.redrawOff_ > 0 || !grid_.Handle()) return;
  grid_.Send(WM_SETREDRAW, TRUE);
  InvalidateRect(grid_.Handle(), nullptr, FALSE);
}

FlexGridWindow::FlexGridWindow(FormWindow& form, controls::FlexGrid& grid)
    : Peer(form, grid), grid_(grid) {
  Create(WC_LISTVIEWW, WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS,
         WS_EX_CLIENTEDGE);
  constexpr DWORD kStyle = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_HEADERDRAGDROP |
                           LVS_EX_LABELTIP | LVS_EX_INFOTIP;
  Send(LVM_SETEXTENDEDLISTVIEWSTYLE, kStyle, static_cast<LPARAM>(kStyle));
  OnScaleChanged();
  ColumnsChanged();
  RowsChanged();
}

void FlexGridWindow::ApplyFont() {
  if (grid_.FontName.empty()) return;
  LOGFONTW font{};
  GetObjectW(Owner().Font(), sizeof font, &font);
  const std::wstring name = ToWide(grid_.FontName);
  lstrcpynW(font.lfFaceName, name.c_str(), LF_FACESIZE);
  // The former font goes only when the list view no longer has it.
  UniqueFont former = std::exchange(font_, UniqueFont(CreateFontIndirectW(&font)));
  Send(WM_SETFONT, reinterpret_cast<WPARAM>(font_.Get()), TRUE);
}

void FlexGridWindow::OnScaleChanged() {
  ApplyFont();
  UniqueImageList former = std::exchange(
      rowHeight_,
      UniqueImageList(ImageList_Create(1, CurrentScale().Units(19), ILC_COLOR32, 0, 0)));
  Send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(rowHeight_.Get()));
  for (std::size_t i = 0; i < shown_.size(); ++i) UpdateColumn(static_cast<int>(i));
}

// Rows.

void FlexGridWindow::RowsChanged() {
  if (!Handle()) return;
  if (std::exchange(appended_, false)) KillTimer(Handle(), kRowsTimer);
  const Nesting changing(changing_);
  const RedrawOff off(*this);
  Send(LVM_SETITEMCOUNT, static_cast<WPARAM>(grid_.Rows() - 1), LVSICF_NOSCROLL);
  ShowSelection();
}

void FlexGridWindow::RowsAppended() {
  if (!Handle()) return;
  // The list view draws its scroll bar anew each time, which takes longer than a block of rows
  // takes to come.
  constexpr UINT kPause = 50;  // milliseconds
  if (appended_) return;       // even a question to the list view takes longer than a row
  if (Send(LVM_GETITEMCOUNT) == 0) return ShowAppended();
  appended_ = true;
  SetTimer(Handle(), kRowsTimer, kPause, nullptr);
}

void FlexGridWindow::ShowAppended() {
  if (std::exchange(appended_, false)) KillTimer(Handle(), kRowsTimer);
  const Nesting changing(changing_);
  Send(LVM_SETITEMCOUNT, static_cast<WPARAM>(grid_.Rows() - 1),
       LVSICF_NOSCROLL | LVSICF_NOINVALIDATEALL);
}

void FlexGridWindow::RowShown(int row) {
  if (appended_) ShowAppended();
  Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row - 1), FALSE);
}

void FlexGridWindow::RedrawChanged() {
  if (!Handle()) return;
  if (!grid_.Redraw()) {
    // The one keeps the screen as it is, the other saves the work of painting what nobody sees.
    LockWindowUpdate(Handle());
    if (redrawOff_++ == 0) Send(WM_SETREDRAW, FALSE);
    return;
  }
  if (--redrawOff_ == 0) Send(WM_SETREDRAW, TRUE);
  LockWindowUpdate(nullptr);
  // WM_SETREDRAW shows a hidden window.
  ShowVisible();
  RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

// What the list view asks and tells.

std::optional<LRESULT> FlexGridWindow::OnNotify(NMHDR& header) {
  switch (header.code) {
    case LVN_GETDISPINFOW:
      GiveCell(reinterpret_cast<NMLVDISPINFOW&>(header).item);
      return 0;
    case LVN_ODFINDITEMW:
      return FindItem(reinterpret_cast<const NMLVFINDITEMW&>(header));
    case LVN_ITEMCHANGED:
      OnItemChanged(reinterpret_cast<const NMLISTVIEW&>(header));
      return 0;
    case LVN_ODSTATECHANGED:
      OnRangeChanged(reinterpret_cast<const NMLVODSTATECHANGE&>(header));
      return 0;
    case LVN_COLUMNCLICK: {
      const int listColumn = reinterpret_cast<const NMLISTVIEW&>(header).iSubItem;
      if (!ColumnOf(listColumn)) return 0;
      SetCursor(LoadCursorW(nullptr, IDC_WAIT));
      grid_.UserClicksHeading(shown_[static_cast<std::size_t>(listColumn)]);
      SetCursor(LoadCursorW(nullptr, IDC_ARROW));
      return 0;
    }
    case NM_CLICK:
      OnClick(MouseButton::Left, reinterpret_cast<const NMITEMACTIVATE&>(header));
      return 0;
    case NM_RCLICK:
      OnClick(MouseButton::Right, reinterpret_cast<const NMITEMACTIVATE&>(header));
      return 1;
    case NM_DBLCLK:
      ReadSelection();
      if (reinterpret_cast<const NMITEMACTIVATE&>(header).iItem >= 0) grid_.UserDoubleClicks();
      return 0;
    case NM_CUSTOMDRAW:
      return OnDraw(reinterpret_cast<const NMLVCUSTOMDRAW&>(header));
    default:
      return std::nullopt;
  }
}

void FlexGridWindow::GiveCell(LVITEMW& item) {
  const GridColumn* column = ColumnOf(item.iSubItem);
  if (!(item.mask & LVIF_TEXT) || !column) return;
  String text;
  if (item.iItem >= 0 && item.iItem < grid_.Rows() - 1) {
    text = grid_.Text(item.iItem + 1, shown_[static_cast<std::size_t>(item.iSubItem)]);
  }
  if (column->Picture) {
    // On the screen the picture stands for the text; whoever asks otherwise wants it in words.
    text = painting_ ? String() : column->Picture(text).second;
  }
  std::wstring& given = given_[nextGiven_++ % given_.size()];
  given = ToWide(text);
  item.pszText = given.data();
}

LRESULT FlexGridWindow::FindItem(const NMLVFINDITEMW& search) {
  if (appended_) ShowAppended();
  if (!(search.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) || !ColumnOf(0)) return -1;
  const String text = FromWide(search.lvfi.psz);
  int row = grid_.FindRow(text, search.iStart + 1, shown_.front());
  if (row < 0 && search.lvfi.flags & LVFI_WRAP) row = grid_.FindRow(text, 1, shown_.front());
  return row < 0 ? -1 : row - 1;
}

void FlexGridWindow::OnClick(MouseButton button, const NMITEMACTIVATE& click) {
  ReadSelection();
  LVHITTESTINFO test{};
  test.pt = click.ptAction;
  Send(LVM_SUBITEMHITTEST, 0, &test);
  grid_.UserReleases(button, HeldKeys(), test.iItem < 0 ? -1 : test.iItem + 1);
}

std::optional<LRESULT> FlexGridWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_PAINT:
      painting_ = true;
      return std::nullopt;
    case WM_NOTIFY: {
      const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
      if (header.hwndFrom != Header()) return std::nullopt;
      return OnHeader(reinterpret_cast<const NMHEADERW&>(header));
    }
    case WM_TIMER:
      if (wParam != kRowsTimer) return std::nullopt;
      ShowAppended();
      return 0;
    case WM_GETDLGCODE:
      // Enter opens the row; it is not the form's.
      if (lParam && reinterpret_cast<const MSG*>(lParam)->wParam == VK_RETURN) {
        return DLGC_WANTMESSAGE | DLGC_WANTARROWS | DLGC_WANTCHARS;
      }
      return std::nullopt;
    case WM_KEYDOWN:
      // A command is one press of its key: held, it would start again behind each box it opened.
      if (IsRepeated(lParam) && (wParam == VK_RETURN || wParam == VK_DELETE)) return 0;
      return OnKey(wParam) ? std::optional<LRESULT>(0) : std::nullopt;
    case WM_CHAR:
      // Enter's character; the list view would look for a row that begins with it.
      return wParam < L' ' ? std::optional<LRESULT>(0) : std::nullopt;
    default:
      return std::nullopt;
  }
}

bool FlexGridWindow::MayChangeSelection(UINT message) const {
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_KEYDOWN:
    case WM_CHAR:
      return true;
    case WM_MOUSEMOVE:
    case WM_TIMER:
      return GetCapture() == Handle();  // a rubber band
    default:
      return false;
  }
}

void FlexGridWindow::AfterMessage(UINT message) {
  if (message == WM_PAINT) painting_ = false;
  if (MayChangeSelection(message)) ReadSelection();
}

bool FlexGridWindow::OnKey(WPARAM key) {
  const std::int16_t held = HeldKeys();
  grid_.UserPresses(static_cast<std::int16_t>(key), held);
  if (held == controls::ShiftMask::Ctrl) {
    if (key == 'A') grid_.SelectAll();
    // The list view would measure every row to fit its columns.
    if (key == 'A' || key == VK_ADD) return true;
  }
  return key == VK_RETURN || key == VK_DELETE;
}

}  // namespace ktrv::windows
