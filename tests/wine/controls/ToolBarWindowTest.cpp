#include <gtest/gtest.h>

#include "controls/Label.h"
#include "controls/TextBox.h"
#include "controls/ToolBar.h"
#include "tests/scripthost/UiInput.h"
#include "tests/wine/controls/Play.h"

namespace ktrv::windows {
namespace {

namespace UiInput = scripthost::UiInput;

class AToolBar : public testing::Test {
 protected:
  AToolBar() {
    bar_.AddButton(
        {.Key = u"NEW", .Caption = u"New", .Picture = controls::Image::New, .DropDown = true});
    bar_.AddButton({.Key = u"DELETE", .Caption = u"Delete", .Picture = controls::Image::Delete});
    bar_.SetBand(label_, find_);
    bar_.ButtonClick = [this](const String& key) { clicked_ += key + u";"; };
    bar_.ButtonDropDown = [this](const String& key, int x, int y) {
      dropped_ += key;
      place_ = {x, y};
    };
    form_.Show();
    Pump();
  }

  HWND Buttons() const {
    return FindWindowExW(WindowOf(bar_), nullptr, TOOLBARCLASSNAMEW, nullptr);
  }
  RECT PlaceOf(int button) const {
    RECT place{};
    SendMessageW(Buttons(), TB_GETITEMRECT, static_cast<WPARAM>(button),
                 reinterpret_cast<LPARAM>(&place));
    return place;
  }
  void Click(LONG x, LONG y) {
    UiInput::Click(Buttons(), {x, y}, 0);
    PumpUntil([this] { return !clicked_.empty() || !dropped_.empty(); });
  }

  Win32Screen screen_;
  controls::Form form_{screen_, {u"Tools", 9000, 6000}};
  controls::ToolBar bar_{form_};
  controls::Label label_{form_, {0, 0, 0, 0}, u"&Find:"};
  controls::TextBox find_{form_, {0, 0, 3000, 0}};
  String clicked_;
  String dropped_;
  POINT place_{};
};

TEST_F(AToolBar, ReportsTheButtonThatWasClicked) {
  const RECT place = PlaceOf(1);
  Click((place.left + place.right) / 2, (place.top + place.bottom) / 2);
  EXPECT_EQ(clicked_, u"DELETE;");
}

TEST_F(AToolBar, ReportsTheArrowBesideAButtonApartFromTheButton) {
  const RECT place = PlaceOf(0);
  Click(place.right - 5, (place.top + place.bottom) / 2);
  EXPECT_EQ(dropped_, u"NEW");
  EXPECT_EQ(clicked_, u"");
  Click(place.left + 8, (place.top + place.bottom) / 2);
  EXPECT_TRUE(PumpUntil([this] { return clicked_ == u"NEW;"; }));
}

TEST_F(AToolBar, LetsAMenuDropFromBelowTheButton) {
  const RECT place = PlaceOf(0);
  Click(place.right - 5, (place.top + place.bottom) / 2);
  RECT onForm = place;
  MapWindowPoints(Buttons(), WindowOf(form_), reinterpret_cast<POINT*>(&onForm), 2);
  const Scale scale = Scale::Of(WindowOf(form_));
  EXPECT_EQ(place_.x, scale.ToTwips(onForm.left));
  EXPECT_EQ(place_.y, scale.ToTwips(onForm.bottom));
}

TEST_F(AToolBar, DoesNotReportADisabledButton) {
  bar_.SetButtonEnabled(u"DELETE", false);
  const RECT place = PlaceOf(1);
  UiInput::Click(Buttons(), {(place.left + place.right) / 2, (place.top + place.bottom) / 2}, 0);
  const RECT other = PlaceOf(0);
  Click(other.left + 8, (other.top + other.bottom) / 2);
  EXPECT_EQ(clicked_, u"NEW;");
}

TEST_F(AToolBar, KeepsTheFocusWhereItIs) {
  find_.SetFocus();
  Pump();
  const RECT place = PlaceOf(1);
  Click((place.left + place.right) / 2, (place.top + place.bottom) / 2);
  EXPECT_EQ(GetFocus(), WindowOf(find_));
}

TEST_F(AToolBar, HoldsALabelledBoxInItsSecondBand) {
  EXPECT_TRUE(IsChild(WindowOf(bar_), WindowOf(find_)));
  EXPECT_TRUE(IsChild(WindowOf(bar_), WindowOf(label_)));
  UiInput::Type(WindowOf(find_), L"anna");
  EXPECT_TRUE(PumpUntil([this] { return find_.Text() == u"anna"; }));
}

}  // namespace
}  // namespace ktrv::windows
