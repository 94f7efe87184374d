#include <array>

#include "tests/scripthost/UiInput.h"
#include "tests/wine/addressbook/BookWindow.h"
#include "tests/wine/controls/Seen.h"

namespace ktrv::windows {
namespace {

namespace UiInput = scripthost::UiInput;

/// The keys of the address book, pressed in its real window, and what is seen afterwards.
class ABookKeyboard : public BookWindow {
 protected:
  HWND FindBox() const { return WindowOf(form_.txtFind); }
  HWND Header() const { return ListView_GetHeader(List()); }
  String ChosenName() const {
    const int row = Seen::CurrentRow(List());
    return row == 0 ? String() : form_.vsfContacts.Text(row, NameColumn());
  }
  int NameColumn() const { return form_.vsfContacts.ColIndex(u"NAME"); }
  void Press(HWND window, WORD key, UINT keys = 0) {
    UiInput::Press(window, key, keys);
    Settle();
  }
  void Type(const std::wstring& text) {
    UiInput::Type(FindBox(), text);
    Settle();
  }
  std::wstring Heading(int column) const {
    std::array<wchar_t, 50> text{};
    HDITEMW item{};
    item.mask = HDI_TEXT;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    SendMessageW(Header(), HDM_GETITEMW, static_cast<WPARAM>(column),
                 reinterpret_cast<LPARAM>(&item));
    return text.data();
  }
  /// The colour of a row right of its name, as it is painted.
  COLORREF ColorOfRow(int row) const {
    UpdateWindow(List());
    RECT place{};
    ListView_GetItemRect(List(), row - 1, &place, LVIR_BOUNDS);
    const HDC painted = GetDC(List());
    const COLORREF color = GetPixel(painted, place.left + ListView_GetColumnWidth(List(), 0) - 3,
                                    (place.top + place.bottom) / 2);
    ReleaseDC(List(), painted);
    return color;
  }
  static int Brightness(COLORREF color) {
    return (3 * GetRValue(color) + 6 * GetGValue(color) + GetBValue(color)) / 10;
  }
};

TEST_F(ABookKeyboard, FindsGoesOnAndClearsByKeys) {
  Type(L"name 1");
  const String first = ChosenName();
  EXPECT_TRUE(first.starts_with(u"Name 1"));
  const int row = Seen::CurrentRow(List());
  Press(FindBox(), VK_RETURN);
  EXPECT_GT(Seen::CurrentRow(List()), row);
  EXPECT_TRUE(ChosenName().starts_with(u"Name 1"));
  Press(FindBox(), VK_F3, MK_SHIFT);
  EXPECT_EQ(Seen::CurrentRow(List()), row);
  Press(FindBox(), VK_ESCAPE);
  EXPECT_EQ(GetWindowTextLengthW(FindBox()), 0);
  EXPECT_EQ(Seen::SelectedRows(List()), std::set<int>{row});
  Press(FindBox(), VK_DOWN);
  EXPECT_EQ(GetFocus(), List());
  EXPECT_EQ(Seen::CurrentRow(List()), row);
}

TEST_F(ABookKeyboard, GoesToTheFindBoxWithItsTextSelected) {
  Type(L"name 5");
  for (const bool byAccessKey : {true, false}) {
    SetFocus(List());
    Pump();
    if (byAccessKey) {
      UiInput::PressAlt(List(), 'F');
    } else {
      UiInput::Press(List(), 'F', MK_CONTROL);
    }
    ASSERT_TRUE(PumpUntil([this] { return GetFocus() == FindBox(); }));
    DWORD start = 9;
    DWORD end = 9;
    SendMessageW(FindBox(), EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                 reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(start, 0U);
    EXPECT_EQ(end, 6U);
  }
}

TEST_F(ABookKeyboard, KeepsRowScrollAndWidthWhenTheListIsLoadedAgain) {
  Lists(200);
  Press(List(), VK_F5);
  UiInput::Click(List(), Seen::MiddleOf(List(), 120), 0);
  Settle();
  const int top = ListView_GetTopIndex(List());
  ASSERT_GT(top, 0);
  RECT name{};
  Header_GetItemRect(Header(), 0, &name);
  UiInput::Drag(Header(), {name.right - 1, name.bottom / 2}, {name.right + 40, name.bottom / 2});
  Settle();
  const int width = ListView_GetColumnWidth(List(), 0);
  ASSERT_GT(width, name.right - name.left);
  Press(List(), VK_F5);
  EXPECT_EQ(Seen::SelectedRows(List()), std::set<int>{120});
  EXPECT_EQ(ListView_GetTopIndex(List()), top);
  EXPECT_NEAR(ListView_GetColumnWidth(List(), 0), width, 1);
}

TEST_F(ABookKeyboard, ShowsTheSelectionInAListWithoutTheFocus) {
  UiInput::Click(List(), Seen::MiddleOf(List(), 2), 0);
  Settle();
  const COLORREF focused = ColorOfRow(2);
  const COLORREF plain = ColorOfRow(4);
  SetFocus(Tree());
  Pump();
  const COLORREF unfocused = ColorOfRow(2);
  EXPECT_NE(unfocused, focused);
  EXPECT_GE(std::abs(Brightness(unfocused) - Brightness(plain)), 25);
}

TEST_F(ABookKeyboard, HasHeadingsBeforeTheFirstRows) {
  form_.Unload();
  ASSERT_TRUE(PumpUntil([this] { return form_.IsGone(); }));
  driver_.FetchGateOf = u"AS CONTACTTYPE";  // the list, not the tree, which is waited for
  driver_.FetchGate.Close();
  form_.Show();
  Pump();
  EXPECT_EQ(Rows(), 0);
  EXPECT_EQ(Heading(0), L"Name");
  EXPECT_EQ(Heading(1), L"Mobile No");
  driver_.FetchGate.Open();
  Settle();
  EXPECT_EQ(Heading(0), L"Name");
}

TEST_F(ABookKeyboard, SeesABarThatMovesUntilRowsCanBeCounted) {
  const HWND bar = WindowOf(form_.ProgressBar1);
  EXPECT_FALSE(IsWindowVisible(bar));
  driver_.FetchGateOf = u"AS CONTACTTYPE";
  driver_.FetchGate.Close();
  UiInput::Press(List(), VK_F5, 0);
  ASSERT_TRUE(PumpUntil([&] { return IsWindowVisible(bar) != 0; }));
  EXPECT_TRUE(GetWindowLongPtrW(bar, GWL_STYLE) & PBS_MARQUEE);
  driver_.FetchGate.Open();
  Settle();
  EXPECT_FALSE(GetWindowLongPtrW(bar, GWL_STYLE) & PBS_MARQUEE);
  EXPECT_FALSE(IsWindowVisible(bar));
}

TEST_F(ABookKeyboard, ReachesTheToolbarByItsAccessKeysFromThePaneThatHasTheFocus) {
  SetFocus(List());
  Pump();
  Lists(7);
  UiInput::PressAlt(List(), 'R');
  ASSERT_TRUE(PumpUntil([this] { return Rows() == 7; }));
  Settle();
  EXPECT_EQ(GetFocus(), List());
}

TEST_F(ABookKeyboard, ShowsWhichRowHasTheFocusInAListThatGetsIt) {
  SetFocus(FindBox());
  Pump();
  SetFocus(List());
  Pump();
  EXPECT_EQ(Seen::CurrentRow(List()), 1);
  EXPECT_TRUE(Seen::SelectedRows(List()).empty());
}

}  // namespace
}  // namespace ktrv::windows
