#include <gtest/gtest.h>

#include "common/Error.h"
#include "controls/Form.h"
#include "controls/Menu.h"
#include "controls/ProgressBar.h"
#include "controls/StatusBar.h"
#include "controls/ToolBar.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::controls {
namespace {

struct BarsTest : testing::Test {
  tests::ScriptedScreen screen;
  Form form{screen, {}};
  StatusBar statusBar{form};
  ProgressBar progress{form, {}};
  ToolBar toolBar{form};
};

TEST_F(BarsTest, PanelsAreCountedFromOne) {
  EXPECT_EQ(statusBar.AddPanel({u"a", 100}), 1);
  EXPECT_EQ(statusBar.AddPanel({u"b", 200}), 2);
  statusBar.SetPanelText(2, u"c");
  statusBar.RemovePanel(1);
  EXPECT_EQ(statusBar.PanelCount(), 1);
  EXPECT_EQ(statusBar.PanelAt(1).Text, u"c");
}

TEST_F(BarsTest, APanelThatIsNotThereIsRefused) {
  EXPECT_THROW(statusBar.PanelAt(0), Error);
  EXPECT_THROW(statusBar.RemovePanel(1), Error);
  EXPECT_THROW(statusBar.SetPanelText(1, u""), Error);
}

TEST_F(BarsTest, AValueOutsideTheRangeGoesToTheNearerEnd) {
  progress.SetRange(0, 10);
  progress.SetValue(11);
  EXPECT_EQ(progress.Value(), 10);
  progress.SetValue(-1);
  EXPECT_EQ(progress.Value(), 0);
}

TEST_F(BarsTest, ACountOfMoreThan32BitsEndsAtTheLargestNumber) {
  progress.SetRange(0, std::int64_t{1} << 40);
  EXPECT_EQ(progress.Max(), 0x7FFFFFFF);
  progress.SetValue(std::int64_t{1} << 40);
  EXPECT_EQ(progress.Value(), 0x7FFFFFFF);
}

TEST_F(BarsTest, AnEmptyRangeIsRefused) {
  EXPECT_THROW(progress.SetRange(0, 0), Error);
  EXPECT_EQ(progress.Max(), 100);
}

TEST_F(BarsTest, ANarrowerRangeTakesTheValueIn) {
  progress.SetValue(80);
  progress.SetRange(0, 10);
  EXPECT_EQ(progress.Value(), 10);
}

TEST_F(BarsTest, AnEnabledButtonReportsItsKey) {
  String clicked;
  toolBar.ButtonClick = [&](const String& key) { clicked = key; };
  toolBar.AddButton({.Key = u"NEW"});
  toolBar.UserClicks(u"NEW");
  EXPECT_EQ(clicked, u"NEW");
}

TEST_F(BarsTest, ADisabledButtonReportsNothing) {
  int clicks = 0;
  toolBar.ButtonClick = [&](const String&) { ++clicks; };
  toolBar.AddButton({.Key = u"NEW"});
  toolBar.SetButtonEnabled(u"NEW", false);
  toolBar.UserClicks(u"NEW");
  toolBar.SetButtonEnabled(u"NEW", true);
  toolBar.SetEnabled(false);
  toolBar.UserClicks(u"NEW");
  EXPECT_EQ(clicks, 0);
}

TEST_F(BarsTest, OnlyADropDownButtonHasAnArrow) {
  std::vector<String> dropped;
  toolBar.ButtonDropDown = [&](const String& key, int, int) { dropped.push_back(key); };
  toolBar.AddButton({.Key = u"NEW", .DropDown = true});
  toolBar.AddButton({.Key = u"DELETE"});
  toolBar.UserDropsDown(u"NEW", 1, 2);
  toolBar.UserDropsDown(u"DELETE", 1, 2);
  EXPECT_EQ(dropped, (std::vector<String>{u"NEW"}));
}

TEST_F(BarsTest, AButtonThatIsNotThereIsRefused) {
  EXPECT_THROW(toolBar.UserClicks(u"X"), Error);
}

TEST(Menu, FindsAnItemByItsName) {
  Menu menu{u"", {{.Name = u"mnuCopy", .Caption = u"Copy"}}};
  ASSERT_NE(menu.Find(u"mnuCopy"), nullptr);
  EXPECT_EQ(menu.Find(u"mnuCopy")->Caption, u"Copy");
  EXPECT_EQ(menu.Find(u"mnuPaste"), nullptr);
}

TEST_F(BarsTest, AMarqueeLeavesTheValue) {
  progress.SetRange(0, 10);
  progress.SetValue(3);
  progress.SetMarquee(true);
  EXPECT_TRUE(progress.Marquee());
  EXPECT_EQ(progress.Value(), 3);
}

}  // namespace
}  // namespace ktrv::controls
