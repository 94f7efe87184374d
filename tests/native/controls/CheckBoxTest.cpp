#include "controls/CheckBox.h"

#include <gtest/gtest.h>

#include "controls/Form.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::controls {
namespace {

struct CheckBoxTest : testing::Test {
  CheckBoxTest() {
    box.Click = [this] { ++clicks; };
  }
  tests::ScriptedScreen screen;
  Form form{screen, {}};
  CheckBox box{form, {}, u"Map"};
  int clicks = 0;
};

TEST_F(CheckBoxTest, IsClearedAtFirst) {
  EXPECT_FALSE(box.Checked());
}

TEST_F(CheckBoxTest, TheUserTurnsItOverAndClickIsReported) {
  box.UserClicks();
  EXPECT_TRUE(box.Checked());
  box.UserClicks();
  EXPECT_FALSE(box.Checked());
  EXPECT_EQ(clicks, 2);
}

TEST_F(CheckBoxTest, TheProgramReportsClickOnlyWhenItChangesTheBox) {
  box.SetChecked(false);
  EXPECT_EQ(clicks, 0);
  box.SetChecked(true);
  EXPECT_EQ(clicks, 1);
}

TEST_F(CheckBoxTest, ADisabledOrInvisibleBoxTakesNoClick) {
  box.SetEnabled(false);
  box.UserClicks();
  box.SetEnabled(true);
  box.SetVisible(false);
  box.UserClicks();
  EXPECT_FALSE(box.Checked());
}

}  // namespace
}  // namespace ktrv::controls
