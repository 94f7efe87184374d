#include <algorithm>
#include <array>
#include <string>

#include "common/ScopeExit.h"
#include "controls/FlexGrid.h"
#include "windows/base/WideText.h"
#include "windows/controls/CutTextTip.h"
#include "windows/controls/Drawing.h"
#include "windows/controls/FormWindow.h"
#include "windows/controls/Keys.h"
#include "windows/controls/ListColumns.h"
#include "windows/controls/ListSelection.h"
#include "windows/controls/WindowFactory.h"

namespace ktrv::windows {

using controls::MouseButton;

namespace {

/// A virtual list view: it requests the cells it shows, so rows need no memory here.
class FlexGridWindow final : public Peer<controls::FlexGridPeer> {
 public:
  FlexGridWindow(FormWindow& form, controls::FlexGrid& grid);

  void ColumnsChanged() override;
  void RowsChanged() override;
  void RowsAppended() override;
  void HeadingChanged(int column) override { columns_.HeadingChanged(column); }
  void SelectionChanged() override;
  void RowShown(int row) override;
  void RedrawChanged() override;
  int TopRow() const override;
  void TopRowChanged(int row) override;

  AccessiblePart Describe() const override {
    return {.Role = ROLE_SYSTEM_LIST,
            .State = STATE_SYSTEM_MULTISELECTABLE | STATE_SYSTEM_EXTSELECTABLE};
  }
  int PartCount() const override { return grid_.Rows() - 1; }
  AccessiblePart Part(int number) const override;
  int PartAt(POINT place) const override;
  int FocusedPart() const override { return grid_.Row(); }

  std::optional<LRESULT> OnNotify(NMHDR& header) override;
  void OnScaleChanged() override;

 protected:
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void AfterMessage(UINT message) override;

 private:
  /// Suspends painting of the list view. Nestable.
  [[nodiscard]] auto RedrawOff();

  /// Timer that shows appended rows together, after a short delay.
  static constexpr UINT_PTR kRowsTimer = 0x4B54;
  void ShowAppended();
  /// Applies the form's font with the grid's own font family, if it has one.
  void ApplyFont();
  /// Sets the row height, and the room for pictures in front of the first column.
  void SizeRows();
  /// When the list has the focus, the user must see a row that has it.
  void ShowFocus();
  bool appended_ = false;  ///< rows were appended that are not shown yet

  void GiveCell(LVITEMW& item);
  /// The text of a cell; the name of a picture instead of its text.
  String SpokenCell(int row, int column) const;
  LRESULT FindItem(const NMLVFINDITEMW& search);
  bool MayChangeSelection(UINT message) const;
  void OnClick(controls::MouseButton button, const NMITEMACTIVATE& click);
  bool OnKey(WPARAM key);

  // Dragging of the selected rows with the left button.
  /// Timer that continues a drag over the same place, to scroll and to expand what is there.
  static constexpr UINT_PTR kDragTimer = 0x4B55;
  void BeginDrag();
  void Drag();
  /// \param drops whether the button was released
  void EndDrag(bool drops);
  /// Handles messages during a drag. \return whether it did
  bool OnDragMessage(UINT message, WPARAM wParam);
  /// The pointer in the form, in twips.
  POINT PointerInForm() const;
  bool dragging_ = false;
  bool mayDrop_ = false;

  controls::FlexGrid& grid_;
  UniqueFont font_;          ///< null: the grid uses the form's font
  UniqueImageList rowSize_;  ///< its image size sets the row height and the room for pictures
  SIZE rowImage_{};
  ListColumns columns_;
  ListSelection selection_;
  CutTextTip tip_;
  int redrawOff_ = 0;
  bool painting_ = false;
  /// The last texts passed to the list view, which may use several at a time.
  std::array<std::wstring, 4> given_;
  std::size_t nextGiven_ = 0;
};

auto FlexGridWindow::RedrawOff() {
  if (redrawOff_++ == 0) Send(WM_SETREDRAW, FALSE);
  return ScopeExit([this] {
    if (--redrawOff_ > 0 || !Handle()) return;
    Send(WM_SETREDRAW, TRUE);
    InvalidateRect(Handle(), nullptr, FALSE);
  });
}

FlexGridWindow::FlexGridWindow(FormWindow& form, controls::FlexGrid& grid)
    : Peer(form, grid),
      grid_(grid),
      columns_(*this, grid),
      selection_(*this, grid),
      tip_(*this, columns_, grid) {
  Create(WC_LISTVIEWW, WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS,
         WS_EX_CLIENTEDGE);
  constexpr DWORD kStyle = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_HEADERDRAGDROP;
  Send(LVM_SETEXTENDEDLISTVIEWSTYLE, kStyle, static_cast<LPARAM>(kStyle));
  OnScaleChanged();
  tip_.Create();
  ColumnsChanged();
  columns_.ShowFirst();
  RowsChanged();
}

void FlexGridWindow::ApplyFont() {
  if (grid_.FontName.empty()) return;
  LOGFONTW font{};
  GetObjectW(Owner().Font(), sizeof font, &font);
  const std::wstring name = ToWide(grid_.FontName);
  lstrcpynW(font.lfFaceName, name.c_str(), LF_FACESIZE);
  // The previous font is destroyed after the list view has the new one.
  UniqueFont former = std::exchange(font_, UniqueFont(CreateFontIndirectW(&font)));
  Send(WM_SETFONT, reinterpret_cast<WPARAM>(font_.Get()), TRUE);
}

void FlexGridWindow::OnScaleChanged() {
  ApplyFont();
  SizeRows();
  columns_.Update();
}

void FlexGridWindow::SizeRows() {
  const int width = columns_.HasPicturesBefore() ? CurrentScale().Units(18) : 1;
  const SIZE wanted{width, CurrentScale().Units(19)};
  if (wanted.cx == rowImage_.cx && wanted.cy == rowImage_.cy) return;
  rowImage_ = wanted;
  UniqueImageList former = std::exchange(
      rowSize_, UniqueImageList(ImageList_Create(wanted.cx, wanted.cy, ILC_COLOR32, 0, 0)));
  Send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(rowSize_.Get()));
}

void FlexGridWindow::ColumnsChanged() {
  if (!Handle()) return;
  const auto ignoring = selection_.Ignoring();
  if (!columns_.AreOthers()) {
    if (columns_.AreNamed()) columns_.Update();
    SizeRows();
    return;
  }
  const auto off = RedrawOff();
  columns_.Replace();
  SizeRows();
}

void FlexGridWindow::SelectionChanged() {
  if (!Handle()) return;
  if (appended_) ShowAppended();
  const auto ignoring = selection_.Ignoring();
  if (!selection_.HasMany()) return selection_.Show();
  const auto off = RedrawOff();
  selection_.Show();
}

// Rows.

void FlexGridWindow::RowsChanged() {
  if (!Handle()) return;
  if (std::exchange(appended_, false)) KillTimer(Handle(), kRowsTimer);
  const auto ignoring = selection_.Ignoring();
  const auto off = RedrawOff();
  Send(LVM_SETITEMCOUNT, static_cast<WPARAM>(grid_.Rows() - 1), LVSICF_NOSCROLL);
  selection_.Show();
}

void FlexGridWindow::RowsAppended() {
  if (!Handle()) return;
  // The list view redraws its scroll bar on each change, which takes longer than fetching a block.
  constexpr UINT kPause = 50;  // milliseconds
  if (appended_) return;       // even a message to the list view takes longer than a row
  if (Send(LVM_GETITEMCOUNT) == 0) return ShowAppended();
  appended_ = true;
  SetTimer(Handle(), kRowsTimer, kPause, nullptr);
}

void FlexGridWindow::ShowAppended() {
  if (std::exchange(appended_, false)) KillTimer(Handle(), kRowsTimer);
  const auto ignoring = selection_.Ignoring();
  Send(LVM_SETITEMCOUNT, static_cast<WPARAM>(grid_.Rows() - 1),
       LVSICF_NOSCROLL | LVSICF_NOINVALIDATEALL);
}

void FlexGridWindow::RowShown(int row) {
  if (appended_) ShowAppended();
  Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row - 1), FALSE);
}

int FlexGridWindow::TopRow() const {
  return Handle() ? static_cast<int>(Send(LVM_GETTOPINDEX)) + 1 : 0;
}

void FlexGridWindow::TopRowChanged(int row) {
  if (!Handle()) return;
  if (appended_) ShowAppended();
  RECT item{};
  item.left = LVIR_BOUNDS;
  if (!Send(LVM_GETITEMRECT, 0, &item)) return;
  Send(LVM_SCROLL, 0, static_cast<LPARAM>((row - TopRow()) * (item.bottom - item.top)));
}

void FlexGridWindow::ShowFocus() {
  if (grid_.Rows() <= 1 || Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED) >= 0)
    return;
  LVITEMW change{};
  change.state = LVIS_FOCUSED;
  change.stateMask = LVIS_FOCUSED;
  Send(LVM_SETITEMSTATE, static_cast<WPARAM>(TopRow() - 1), &change);
}

void FlexGridWindow::RedrawChanged() {
  if (!Handle()) return;
  if (!grid_.Redraw()) {
    // LockWindowUpdate freezes the screen; WM_SETREDRAW saves the work of invisible painting.
    LockWindowUpdate(Handle());
    if (redrawOff_++ == 0) Send(WM_SETREDRAW, FALSE);
    return;
  }
  if (--redrawOff_ == 0) Send(WM_SETREDRAW, TRUE);
  LockWindowUpdate(nullptr);
  // WM_SETREDRAW makes a hidden window visible.
  ShowVisible();
  RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

// Notifications of the list view.

std::optional<LRESULT> FlexGridWindow::OnNotify(NMHDR& header) {
  switch (header.code) {
    case LVN_GETDISPINFOW:
      GiveCell(reinterpret_cast<NMLVDISPINFOW&>(header).item);
      return 0;
    case LVN_ODFINDITEMW:
      return FindItem(reinterpret_cast<const NMLVFINDITEMW&>(header));
    case LVN_ITEMCHANGED:
      selection_.OnItemChanged(reinterpret_cast<const NMLISTVIEW&>(header));
      return 0;
    case LVN_ODSTATECHANGED:
      selection_.OnRangeChanged(reinterpret_cast<const NMLVODSTATECHANGE&>(header));
      return 0;
    case LVN_COLUMNCLICK: {
      const int listColumn = reinterpret_cast<const NMLISTVIEW&>(header).iSubItem;
      const auto column = columns_.Find(listColumn);
      if (!column) return 0;
      SetCursor(LoadCursorW(nullptr, IDC_WAIT));
      grid_.UserClicksHeading(*column);
      SetCursor(LoadCursorW(nullptr, IDC_ARROW));
      return 0;
    }
    case NM_CLICK:
      OnClick(MouseButton::Left, reinterpret_cast<const NMITEMACTIVATE&>(header));
      return 0;
    case NM_RCLICK:
      OnClick(MouseButton::Right, reinterpret_cast<const NMITEMACTIVATE&>(header));
      return 1;
    case LVN_BEGINDRAG:
      BeginDrag();
      return 0;
    case NM_DBLCLK:
      selection_.Read();
      if (reinterpret_cast<const NMITEMACTIVATE&>(header).iItem >= 0) grid_.UserDoubleClicks();
      return 0;
    case NM_CUSTOMDRAW:
      return columns_.OnDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
    default:
      return std::nullopt;
  }
}

void FlexGridWindow::GiveCell(LVITEMW& item) {
  const auto column = columns_.Find(item.iSubItem);
  if (!(item.mask & LVIF_TEXT) || !column) return;
  String text;
  // When painting, the picture replaces the text.
  const bool isPainted = painting_ && grid_.ColumnAt(*column).Picture;
  if (!isPainted && item.iItem >= 0 && item.iItem < grid_.Rows() - 1) {
    text = SpokenCell(item.iItem + 1, *column);
  }
  std::wstring& given = given_[nextGiven_++ % given_.size()];
  given = ToWide(text);
  item.pszText = given.data();
}

String FlexGridWindow::SpokenCell(int row, int column) const {
  String text = grid_.Text(row, column);
  const auto& picture = grid_.ColumnAt(column).Picture;
  if (!picture) return text;
  String spoken = picture(text).second;
  if (column == 0 && columns_.IsMarked(row - 1)) spoken += u", " + grid_.Mark.Name;
  return spoken;
}

AccessiblePart FlexGridWindow::Part(int number) const {
  AccessiblePart row{.Role = ROLE_SYSTEM_LISTITEM,
                     .State = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE};
  if (grid_.IsSelected(number)) row.State |= STATE_SYSTEM_SELECTED;
  if (number == grid_.Row() && GetFocus() == Handle()) row.State |= STATE_SYSTEM_FOCUSED;
  String others;
  for (int place = 0; const auto column = columns_.Find(place); ++place) {
    const String text = SpokenCell(number, *column);
    if (row.Name.empty() && !grid_.ColumnAt(*column).Picture) {
      row.Name = ToWide(text);
    } else if (!text.empty()) {
      const String& heading = grid_.ColumnAt(*column).Heading;
      others.append(others.empty() ? u"" : u", ").append(heading);
      others.append(heading.empty() ? u"" : u": ").append(text);
    }
  }
  row.Description = ToWide(others);
  row.Place.left = LVIR_BOUNDS;
  if (!Send(LVM_GETITEMRECT, static_cast<WPARAM>(number - 1), &row.Place)) row.Place = {};
  return row;
}

int FlexGridWindow::PartAt(POINT place) const {
  LVHITTESTINFO test{};
  test.pt = place;
  Send(LVM_SUBITEMHITTEST, 0, &test);
  return test.iItem < 0 ? 0 : test.iItem + 1;
}

LRESULT FlexGridWindow::FindItem(const NMLVFINDITEMW& search) {
  if (appended_) ShowAppended();
  const int typing = grid_.TypingColumn();
  const auto column = typing > 0 ? std::optional(typing) : columns_.Find(0);
  if (!(search.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) || !column) return -1;
  const String text = FromWide(search.lvfi.psz);
  int row = grid_.FindRow(text, search.iStart + 1, *column);
  if (row < 0 && search.lvfi.flags & LVFI_WRAP) row = grid_.FindRow(text, 1, *column);
  return row < 0 ? -1 : row - 1;
}

void FlexGridWindow::OnClick(MouseButton button, const NMITEMACTIVATE& click) {
  selection_.Read();
  LVHITTESTINFO test{};
  test.pt = click.ptAction;
  Send(LVM_SUBITEMHITTEST, 0, &test);
  grid_.UserReleases(button, HeldKeys(), test.iItem < 0 ? -1 : test.iItem + 1);
}

void FlexGridWindow::BeginDrag() {
  selection_.Read();
  if (!grid_.DragOver || grid_.Selection().Count() == 0) return;
  constexpr UINT kPause = 100;  // milliseconds
  dragging_ = true;
  SetCapture(Handle());
  SetTimer(Handle(), kDragTimer, kPause, nullptr);
  Drag();
}

POINT FlexGridWindow::PointerInForm() const {
  // Where it was at the message, not where it has moved to since.
  const DWORD packed = GetMessagePos();
  POINT place{static_cast<short>(LOWORD(packed)), static_cast<short>(HIWORD(packed))};
  ScreenToClient(Owner().Handle(), &place);
  return {CurrentScale().ToTwips(place.x), CurrentScale().ToTwips(place.y)};
}

void FlexGridWindow::Drag() {
  const POINT place = PointerInForm();
  mayDrop_ = grid_.DragOver(place.x, place.y);
  SetCursor(LoadCursorW(nullptr, mayDrop_ ? IDC_HAND : IDC_NO));
}

void FlexGridWindow::EndDrag(bool drops) {
  if (!std::exchange(dragging_, false)) return;
  KillTimer(Handle(), kDragTimer);
  if (GetCapture() == Handle()) ReleaseCapture();
  SetCursor(LoadCursorW(nullptr, IDC_ARROW));
  // A move to the place of the release came before it. What was marked then is meant: looking again
  // could scroll the tree under the pointer.
  if (grid_.DragEnd) grid_.DragEnd(drops && mayDrop_);
}

bool FlexGridWindow::OnDragMessage(UINT message, WPARAM wParam) {
  switch (message) {
    case WM_TIMER:
      if (wParam != kDragTimer) return false;
      Drag();
      return true;
    case WM_MOUSEMOVE:
      Drag();
      return true;
    case WM_LBUTTONUP:
      // A dialog may have been opened meanwhile. The list view must know that the button is up.
      EndDrag(IsWindowEnabled(Owner().Handle()) != FALSE);
      return false;
    case WM_RBUTTONDOWN:
      EndDrag(false);
      return true;
    case WM_KEYDOWN:
      if (wParam == VK_ESCAPE) EndDrag(false);
      return true;
    case WM_CAPTURECHANGED:
    case WM_DESTROY:
      EndDrag(false);
      return false;
    default:
      return false;
  }
}

std::optional<LRESULT> FlexGridWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (dragging_ && OnDragMessage(message, wParam)) return 0;
  switch (message) {
    case WM_PAINT:
      painting_ = true;
      return std::nullopt;
    case WM_NOTIFY: {
      auto& header = *reinterpret_cast<NMHDR*>(lParam);
      if (const auto answer = tip_.OnNotify(header)) return answer;
      if (header.hwndFrom != columns_.Header()) return std::nullopt;
      return columns_.OnHeader(reinterpret_cast<const NMHEADERW&>(header));
    }
    case WM_MOUSEMOVE:
      tip_.OnMouseMove();
      return std::nullopt;
    case WM_TIMER:
      if (wParam != kRowsTimer) return std::nullopt;
      ShowAppended();
      return 0;
    case WM_GETDLGCODE:
      // Enter opens the row and Esc ends a drag; the form must not handle them.
      if (lParam && (dragging_ || reinterpret_cast<const MSG*>(lParam)->wParam == VK_RETURN)) {
        return DLGC_WANTMESSAGE | DLGC_WANTARROWS | DLGC_WANTCHARS;
      }
      return std::nullopt;
    case WM_KEYDOWN:
      // No auto-repeat for commands: a held key would start the command again after each box it
      // opened.
      if (IsRepeated(lParam) && (wParam == VK_RETURN || wParam == VK_DELETE)) return 0;
      return OnKey(wParam) ? std::optional<LRESULT>(0) : std::nullopt;
    case WM_CHAR:
      // For the character of Enter the list view would start a search.
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
      return !dragging_ && GetCapture() == Handle();  // rubber-band selection
    default:
      return false;
  }
}

void FlexGridWindow::AfterMessage(UINT message) {
  if (message == WM_PAINT) painting_ = false;
  if (message == WM_SETFOCUS) ShowFocus();
  if (MayChangeSelection(message)) selection_.Read();
}

bool FlexGridWindow::OnKey(WPARAM key) {
  const std::int16_t held = HeldKeys();
  grid_.UserPresses(static_cast<std::int16_t>(key), held);
  if (held == controls::ShiftMask::Ctrl) {
    if (key == 'A') grid_.SelectAll();
    // Ctrl+Plus: the list view would measure all rows to fit its columns.
    if (key == 'A' || key == VK_ADD) return true;
  }
  return key == VK_RETURN || key == VK_DELETE;
}

}  // namespace

std::unique_ptr<controls::FlexGridPeer> WindowFactory::Make(controls::FlexGrid& control) {
  return std::make_unique<FlexGridWindow>(form_, control);
}

}  // namespace ktrv::windows
