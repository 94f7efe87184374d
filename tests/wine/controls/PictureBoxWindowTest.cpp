#include <gtest/gtest.h>

#include "controls/PictureBox.h"
#include "tests/scripthost/UiInput.h"
#include "tests/wine/controls/Play.h"

namespace ktrv::windows {
namespace {

using controls::MouseButton;
using controls::MousePointer;
namespace UiInput = scripthost::UiInput;

class AnArea : public testing::Test {
 protected:
  AnArea() {
    area_.MouseDown = [this](MouseButton, std::int16_t, int, int) { ++downs_; };
    area_.MouseMove = [this](MouseButton, std::int16_t, int x, int) { lastX_ = x; };
    area_.MouseUp = [this](MouseButton, std::int16_t, int, int) { ++ups_; };
    form_.Show();
    Pump();
  }

  Win32Screen screen_;
  controls::Form form_{screen_, {u"Area", 9000, 6000}};
  controls::PictureBox area_{form_, {3000, 0, 600, 6000}, MousePointer::SizeWestEast};
  int downs_ = 0;
  int ups_ = 0;
  int lastX_ = 0;
};

TEST_F(AnArea, FollowsTheMouseOutsideItselfUntilTheButtonIsReleased) {
  UiInput::Drag(WindowOf(area_), {5, 20}, {205, 20});
  EXPECT_TRUE(PumpUntil([this] { return ups_ == 1; }));
  EXPECT_EQ(downs_, 1);
  EXPECT_EQ(lastX_, Scale::Of(WindowOf(area_)).ToTwips(205));
}

TEST_F(AnArea, EndsADragWhenAnotherWindowTakesTheMouse) {
  PostMessageW(WindowOf(area_), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 20));
  Pump();
  EXPECT_EQ(GetCapture(), WindowOf(area_));
  SetCapture(WindowOf(form_));
  ReleaseCapture();
  EXPECT_EQ(downs_, 1);
  EXPECT_EQ(ups_, 1);
}

TEST_F(AnArea, ShowsThePointerThatTellsWhatCanBeDragged) {
  SendMessageW(WindowOf(area_), WM_SETCURSOR, reinterpret_cast<WPARAM>(WindowOf(area_)),
               MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
  EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_SIZEWE));
}

}  // namespace
}  // namespace ktrv::windows
