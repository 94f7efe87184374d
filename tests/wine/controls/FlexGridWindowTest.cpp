#include <array>
#include <gtest/gtest.h>

#include "tests/scripthost/UiInput.h"
#include "tests/wine/controls/Play.h"
#include "tests/wine/controls/PlayForm.h"
#include "windows/base/WideText.h"

namespace ktrv::windows {
namespace {

namespace UiInput = scripthost::UiInput;

class AGridWindow : public testing::Test {
 protected:
  AGridWindow() {
    form_.Show();
    form_.Grid.SetFocus();
    Pump();
  }

  HWND List() const { return WindowOf(form_.Grid); }
  UINT StateOf(int item) const {
    return ListView_GetItemState(List(), item, LVIS_SELECTED | LVIS_FOCUSED);
  }
  String CellOf(int item, int column) const {
    std::array<wchar_t, 100> text{};
    ListView_GetItemText(List(), item, column, text.data(), 100);
    return FromWide(text.data());
  }
  POINT MiddleOf(int item) const {
    RECT place{};
    ListView_GetItemRect(List(), item, &place, LVIR_LABEL);
    return {place.left + 20, (place.top + place.bottom) / 2};
  }
  HWND Header() const { return ListView_GetHeader(List()); }
  RECT HeadingPlace(int listColumn) const {
    RECT place{};
    Header_GetItemRect(Header(), listColumn, &place);
    return place;
  }
  int FirstShown() const {
    std::array<int, 2> order{};
    Header_GetOrderArray(Header(), 2, order.data());
    return order[0];
  }
  void DragFirstHeadingBehindTheSecond() const {
    const RECT first = HeadingPlace(0);
    const RECT second = HeadingPlace(1);
    UiInput::Drag(Header(), {(first.left + first.right) / 2, first.bottom / 2},
                  {second.right - 10, first.bottom / 2});
  }
  void FillWith(int rows) {
    form_.Grid.Reset(rows + 1, 3);
    form_.Grid.ColumnAt(1) = {.Key = u"NAME", .Heading = u"Name"};
    form_.Grid.ColumnsChanged();
  }

  Win32Screen screen_;
  PlayForm form_{screen_};
};

TEST_F(AGridWindow, ShowsTheCellsOfTheVisibleColumns) {
  EXPECT_EQ(ListView_GetItemCount(List()), 5);
  EXPECT_EQ(CellOf(1, 0), u"Name 2");
  EXPECT_EQ(CellOf(1, 1), u"02");
}

TEST_F(AGridWindow, TellsWhichRowTheUserClicked) {
  LeftClick(List(), MiddleOf(2));
  EXPECT_EQ(form_.Grid.Row(), 3);
  EXPECT_EQ(form_.Grid.SelectedRows(), std::vector<int>{3});
}

TEST_F(AGridWindow, TellsTheRowThatAnArrowKeyReached) {
  form_.Grid.SetRow(1);
  PressKey(VK_DOWN);
  EXPECT_EQ(form_.Grid.SelectedRows(), std::vector<int>{2});
}

TEST_F(AGridWindow, ShowsTheRowThatTheFormSelects) {
  form_.Grid.SetRow(4);
  EXPECT_EQ(StateOf(3), UINT{LVIS_SELECTED | LVIS_FOCUSED});
  form_.Grid.SetRow(2);
  EXPECT_EQ(StateOf(3), 0U);
  EXPECT_EQ(StateOf(1), UINT{LVIS_SELECTED | LVIS_FOCUSED});
}

TEST_F(AGridWindow, GivesEnterAndDeleteToTheForm) {
  std::vector<int> keys;
  form_.Grid.KeyDown = [&](std::int16_t key, std::int16_t) { keys.push_back(key); };
  bool saved = false;
  form_.Ok.Click = [&] { saved = true; };
  PressKey(VK_RETURN);
  PressKey(VK_DELETE);
  EXPECT_EQ(keys, (std::vector<int>{13, 46}));
  EXPECT_FALSE(saved);
}

TEST_F(AGridWindow, ReportsADoubleClickOnARow) {
  int clicks = 0;
  form_.Grid.DoubleClick = [&] { ++clicks; };
  const POINT place = MiddleOf(1);
  PostMessageW(List(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(place.x, place.y));
  PostMessageW(List(), WM_LBUTTONUP, 0, MAKELPARAM(place.x, place.y));
  Pump();
  EXPECT_EQ(clicks, 1);
}

TEST_F(AGridWindow, TellsTheRowOfARightClick) {
  int under = 0;
  form_.Grid.MouseUp = [&](controls::MouseButton button, std::int16_t, int row) {
    if (button == controls::MouseButton::Right) under = row;
  };
  RightClick(List(), MiddleOf(3));
  EXPECT_EQ(under, 4);
}

TEST_F(AGridWindow, SortsByAClickedHeading) {
  int column = 0;
  form_.Grid.AfterSort = [&](int sorted, controls::SortOrder) { column = sorted; };
  LeftClick(ListView_GetHeader(List()), {5, 5});
  EXPECT_EQ(column, 1);
}

TEST_F(AGridWindow, KeepsTheHeadingsWhileItIsEmptiedToBeFilledAnew) {
  form_.Grid.Reset(2, 2);
  EXPECT_EQ(Header_GetItemCount(ListView_GetHeader(List())), 2);
}

TEST_F(AGridWindow, GivesTheNameOfAPictureToWhoeverReadsTheCell) {
  form_.Grid.ColumnAt(2).Picture = [](StringView) -> std::pair<controls::Image, String> {
    return {controls::Image::Contact, u"Contact"};
  };
  EXPECT_EQ(CellOf(0, 1), u"Contact");
}

TEST_F(AGridWindow, DoesNotPaintWhileRedrawIsOff) {
  form_.Grid.SetRedraw(false);
  form_.Grid.AddItem(u"6\tName 6\t06");
  EXPECT_FALSE(GetUpdateRect(List(), nullptr, FALSE));
  form_.Grid.SetRedraw(true);
  EXPECT_TRUE(PumpUntil([&] { return ListView_GetItemCount(List()) == 6; }));
  EXPECT_TRUE(IsWindowVisible(List()));
}

TEST_F(AGridWindow, HoldsTheScreenOnlyWhileRedrawIsOff) {
  // The system holds the painting of one window at a time.
  form_.Grid.SetRedraw(false);
  EXPECT_FALSE(LockWindowUpdate(WindowOf(form_.Tree)));
  form_.Grid.SetRedraw(true);
  EXPECT_TRUE(LockWindowUpdate(WindowOf(form_.Tree)));
  LockWindowUpdate(nullptr);
}

TEST_F(AGridWindow, StaysHiddenWhenRedrawComesBack) {
  form_.Grid.SetVisible(false);
  form_.Grid.SetRedraw(false);
  form_.Grid.SetRedraw(true);
  EXPECT_FALSE(IsWindowVisible(List()));
}

TEST_F(AGridWindow, ShowsTheFirstRowsAtOnceAndLaterOnesTogether) {
  form_.Grid.SelectAll();
  form_.Grid.RemoveSelected();
  form_.Grid.AddItem(u"first");
  EXPECT_EQ(ListView_GetItemCount(List()), 1);
  form_.Grid.AddItem(u"second");
  form_.Grid.AddItem(u"third");
  EXPECT_EQ(ListView_GetItemCount(List()), 1);
  EXPECT_TRUE(PumpUntil([&] { return ListView_GetItemCount(List()) == 3; }));
}

TEST_F(AGridWindow, ShowsALateRowAtOnceWhenItIsSelectedOrScrolledTo) {
  form_.Grid.AddItem(u"6\tName 6\t06");
  form_.Grid.SetRow(6);
  EXPECT_EQ(ListView_GetNextItem(List(), -1, LVNI_SELECTED), 5);
  form_.Grid.AddItem(u"7\tName 7\t07");
  form_.Grid.ShowRow(7);
  EXPECT_EQ(ListView_GetItemCount(List()), 7);
}

TEST_F(AGridWindow, DoesNotScrollWhenRowsArrive) {
  FillWith(1000);
  form_.Grid.ShowRow(500);
  const int top = ListView_GetTopIndex(List());
  form_.Grid.AddItem(u"x\ty\tz");
  EXPECT_EQ(ListView_GetTopIndex(List()), top);
}

TEST_F(AGridWindow, SelectsAllOfAMillionRows) {
  FillWith(1'000'000);
  form_.Grid.SelectAll();
  EXPECT_EQ(ListView_GetSelectedCount(List()), 1'000'000U);
}

TEST_F(AGridWindow, SelectsAllWithTheKeyboard) {
  PostMessageW(List(), WM_KEYDOWN, 'A', 1);
  std::array<BYTE, 256> keys{};
  GetKeyboardState(keys.data());
  keys[VK_CONTROL] = 0x80;
  SetKeyboardState(keys.data());
  Pump();
  keys[VK_CONTROL] = 0;
  SetKeyboardState(keys.data());
  EXPECT_EQ(form_.Grid.SelectedRows().size(), 5U);
  EXPECT_EQ(ListView_GetSelectedCount(List()), 5U);
}

TEST_F(AGridWindow, GoesToTheRowWhoseNameIsTyped) {
  form_.Grid.AddItem(u"6\tZoe\t06");
  form_.Grid.SetRow(1);
  UiInput::Type(List(), L"zo");
  EXPECT_TRUE(PumpUntil([this] { return form_.Grid.Row() == 6; }));
}

TEST_F(AGridWindow, TakesTheWidthThatTheUserDragsAHeadingTo) {
  const RECT heading = HeadingPlace(0);
  UiInput::Drag(Header(), {heading.right - 1, heading.bottom / 2},
                {heading.right + 49, heading.bottom / 2});
  const int expected = Scale::Of(List()).ToTwips(heading.right - heading.left + 50);
  EXPECT_TRUE(PumpUntil([&] { return form_.Grid.ColumnAt(1).Width == expected; }));
}

TEST_F(AGridWindow, FitsAColumnByADoubleClickOnItsEdge) {
  const RECT heading = HeadingPlace(0);
  UiInput::DoubleClick(Header(), {heading.right - 1, heading.bottom / 2});
  EXPECT_TRUE(PumpUntil([this] { return form_.Grid.ColumnAt(1).Width < 3000; }));
}

TEST_F(AGridWindow, LetsTheUserMoveAColumn) {
  DragFirstHeadingBehindTheSecond();
  EXPECT_TRUE(PumpUntil([this] { return FirstShown() == 1; }));
}

TEST_F(AGridWindow, KeepsItsColumnsInPlaceWhenTheUserMayNotMoveThem) {
  form_.Grid.UserCanMoveColumns = false;
  int sorted = 0;
  form_.Grid.AfterSort = [&](int column, controls::SortOrder) { sorted = column; };
  DragFirstHeadingBehindTheSecond();
  // The click on a heading after the drag tells that the drag is over.
  const RECT second = HeadingPlace(1);
  UiInput::Click(Header(), {(second.left + second.right) / 2, second.bottom / 2}, 0);
  EXPECT_TRUE(PumpUntil([&] { return sorted == 2; }));
  EXPECT_EQ(FirstShown(), 0);
}

}  // namespace
}  // namespace ktrv::windows
