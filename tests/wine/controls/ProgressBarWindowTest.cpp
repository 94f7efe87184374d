#include <gtest/gtest.h>

#include "tests/wine/controls/Play.h"
#include "tests/wine/controls/PlayForm.h"
#include "windows/controls/StatusBarWindow.h"

namespace ktrv::windows {
namespace {

class AProgressBar : public testing::Test {
 protected:
  AProgressBar() {
    form_.Show();
    Pump();
  }
  HWND Bar() const { return WindowOf(form_.Progress); }
  HWND Status() const { return WindowOf(form_.Status); }
  RECT Inside() const {
    RECT place{};
    GetWindowRect(Bar(), &place);
    MapWindowPoints(nullptr, Status(), reinterpret_cast<POINT*>(&place), 2);
    return place;
  }

  Win32Screen screen_;
  PlayForm form_{screen_};
};

TEST_F(AProgressBar, LiesOnThePanelThatItIsPlacedIn) {
  PlaceProgressBar(Status(), Bar(), 2);
  RECT panel{};
  SendMessageW(Status(), SB_GETRECT, 1, reinterpret_cast<LPARAM>(&panel));
  const RECT bar = Inside();
  EXPECT_EQ(GetParent(Bar()), Status());
  EXPECT_EQ(bar.left, panel.left);
  EXPECT_EQ(bar.right, panel.right);
}

TEST_F(AProgressBar, IsNotMovedByAPanelNumberBelowOne) {
  PlaceProgressBar(Status(), Bar(), 2);
  SetParent(Bar(), WindowOf(form_));
  const RECT size = Inside();
  for (const int panel : {0, -1}) {
    PlaceProgressBar(Status(), Bar(), panel);
    EXPECT_EQ(GetParent(Bar()), Status());
    EXPECT_EQ(Inside().right - Inside().left, size.right - size.left);
    RECT first{};
    SendMessageW(Status(), SB_GETRECT, 0, reinterpret_cast<LPARAM>(&first));
    EXPECT_NE(Inside().right - Inside().left, first.right - first.left);
  }
}

}  // namespace
}  // namespace ktrv::windows
