#include "tests/wine/addressbook/BookWindow.h"

namespace ktrv::windows {
namespace {

/// The address book on monitors of one resolution after the other, and in a narrow window.
class ABookLayout : public BookWindow, public testing::WithParamInterface<int> {
 protected:
  RECT PlaceOf(HWND child) const {
    RECT place{};
    GetWindowRect(child, &place);
    MapWindowPoints(nullptr, Window(), reinterpret_cast<POINT*>(&place), 2);
    return place;
  }
  /// As Windows tells when the user moves the window to a monitor of this resolution.
  void GoToDpi(int dpi) {
    constexpr UINT kDpiChanged = 0x02E0;  // WM_DPICHANGED
    RECT outer{};
    GetWindowRect(Window(), &outer);
    outer.right = outer.left + MulDiv(outer.right - outer.left, dpi, 96);
    outer.bottom = outer.top + MulDiv(outer.bottom - outer.top, dpi, 96);
    SendMessageW(Window(), kDpiChanged, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&outer));
    Pump();
  }
  static int Pixels(int twips, int dpi) { return MulDiv(twips, dpi, 1440); }
  /// The panes beside each other, from below the toolbar to above the status bar.
  void ExpectPanes(int treeWidth, int dpi) {
    RECT inside{};
    GetClientRect(Window(), &inside);
    const RECT tree = PlaceOf(Tree());
    const RECT list = PlaceOf(List());
    const RECT tools = PlaceOf(WindowOf(form_.tlbMain));
    const RECT status = PlaceOf(WindowOf(form_.StatusBar1));
    EXPECT_EQ(tree.left, 0);
    EXPECT_NEAR(tree.right, Pixels(treeWidth, dpi), 1);
    EXPECT_NEAR(list.left, tree.right + Pixels(50, dpi), 1);
    EXPECT_NEAR(list.right, inside.right - Pixels(50, dpi), 1);
    EXPECT_EQ(list.top, tree.top);
    EXPECT_EQ(list.bottom, tree.bottom);
    EXPECT_GE(tree.top, tools.bottom);
    EXPECT_LE(tree.bottom, status.top);
    EXPECT_NEAR(tree.bottom, inside.bottom - Pixels(800, dpi), 2);
    EXPECT_NEAR(status.bottom, inside.bottom, 1);
  }
  static LONG FontHeight(HWND window) {
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)), sizeof font, &font);
    return font.lfHeight;
  }
  LONG RowHeight() const {
    RECT row{};
    ListView_GetItemRect(List(), 0, &row, LVIR_BOUNDS);
    return row.bottom - row.top;
  }
};

TEST_P(ABookLayout, IsNeitherCutNorTornApartOnAMonitorOfThisResolution) {
  const int dpi = GetParam();
  ExpectPanes(3000, 96);
  const LONG listFont = FontHeight(List());
  const LONG treeFont = FontHeight(Tree());
  const LONG row = RowHeight();
  GoToDpi(dpi);
  ExpectPanes(3000, dpi);
  EXPECT_NEAR(FontHeight(List()), MulDiv(listFont, dpi, 96), 1);
  EXPECT_NEAR(FontHeight(Tree()), MulDiv(treeFont, dpi, 96), 1);
  EXPECT_NEAR(RowHeight(), MulDiv(row, dpi, 96), 3);
  // What is written in a row is not cut.
  EXPECT_GE(RowHeight(), std::abs(FontHeight(List())));
  GoToDpi(96);
  EXPECT_EQ(FontHeight(List()), listFont);
}

TEST_P(ABookLayout, ShowsTheProgressInItsNarrowestWindow) {
  const int dpi = GetParam();
  GoToDpi(dpi);
  MoveWindow(Window(), 0, 0, 100, 100, TRUE);
  Pump();
  driver_.OpenGate.Close();
  form_.LoadContacts();
  Pump();
  RECT inside{};
  GetClientRect(Window(), &inside);
  EXPECT_NEAR(inside.right, Pixels(6000, dpi), 3);  // the frame does not scale to the pixel
  const RECT bar = PlaceOf(WindowOf(form_.ProgressBar1));
  EXPECT_GT(bar.left, 0);
  EXPECT_LE(bar.right, inside.right);
  EXPECT_NEAR(bar.right - bar.left, Pixels(3000, dpi), 8);
  driver_.OpenGate.Open();
  Settle();
}

TEST_P(ABookLayout, KeepsListAndBarWithinReachInAWindowMadeNarrow) {
  const int dpi = GetParam();
  GoToDpi(dpi);
  form_.picSlider.MouseDown(controls::MouseButton::Left, 0, 0, 0);
  form_.picSlider.MouseMove(controls::MouseButton::Left, 0, 3600, 0);
  form_.picSlider.MouseUp(controls::MouseButton::Left, 0, 0, 0);
  const int treeWidth = form_.tvwContacts.Width();
  ASSERT_EQ(treeWidth, 6600);
  RECT wide{};
  GetWindowRect(Window(), &wide);
  MoveWindow(Window(), 0, 0, Pixels(6000, dpi), Pixels(6000, dpi), TRUE);
  Pump();
  ExpectPanes(treeWidth, dpi);
  EXPECT_NEAR(PlaceOf(List()).right - PlaceOf(List()).left, Pixels(900, dpi), 2);
  EXPECT_EQ(system_.TextOf(u"log"), u"");
  MoveWindow(Window(), 0, 0, wide.right - wide.left, wide.bottom - wide.top, TRUE);
  Pump();
  ExpectPanes(treeWidth, dpi);
  EXPECT_EQ(ListView_GetItemCount(List()), Rows());
}

INSTANTIATE_TEST_SUITE_P(Resolutions, ABookLayout, testing::Values(96, 144, 192));

}  // namespace
}  // namespace ktrv::windows
