#include <gtest/gtest.h>

#include "controls/CommandButton.h"
#include "controls/DatePicker.h"
#include "controls/Form.h"
#include "controls/TextBox.h"
#include "controls/UpDown.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::controls {
namespace {

DateTime Date(int year, unsigned month, unsigned day) {
  return DateTime{std::chrono::local_days(std::chrono::year(year) / std::chrono::month(month) /
                                          std::chrono::day(day))};
}

struct InputsTest : testing::Test {
  tests::ScriptedScreen screen;
  Form form{screen, {}};
};

struct CommandButtonTest : InputsTest {
  CommandButton button{form, {}, u"&OK", CommandButton::Key::Enter};
};

TEST_F(CommandButtonTest, KnowsTheKeyThatPressesIt) {
  const CommandButton cancel{form, {}, u"&Cancel", CommandButton::Key::Escape};
  EXPECT_TRUE(button.IsDefault());
  EXPECT_FALSE(button.IsCancel());
  EXPECT_TRUE(cancel.IsCancel());
}

TEST_F(CommandButtonTest, ReportsClickUnlessDisabledOrInvisible) {
  int clicks = 0;
  button.Click = [&] { ++clicks; };
  button.UserClicks();
  button.SetEnabled(false);
  button.UserClicks();
  button.SetEnabled(true);
  button.SetVisible(false);
  button.UserClicks();
  EXPECT_EQ(clicks, 1);
}

struct DatePickerTest : InputsTest {
  DatePicker picker{form, {}};
};

TEST_F(DatePickerTest, HoldsNoDateAtFirstAndAgainWhenCleared) {
  EXPECT_FALSE(picker.Value());
  picker.UserPicks(Date(2000, 2, 29));
  EXPECT_EQ(picker.Value(), Date(2000, 2, 29));
  picker.UserPicks(std::nullopt);
  EXPECT_FALSE(picker.Value());
}

TEST_F(DatePickerTest, TheUserPicksNoDateThatADatabaseCannotHold) {
  picker.UserPicks(Date(1752, 12, 31));
  EXPECT_EQ(picker.Value(), Date(1753, 1, 1));
  picker.UserPicks(Date(10000, 1, 1));
  EXPECT_EQ(picker.Value(), Date(9999, 12, 31));
}

TEST_F(DatePickerTest, HoldsNoDateThatItCannotShow) {
  picker.SetValue(Date(1066, 10, 14));
  EXPECT_FALSE(picker.Value());
  picker.SetValue(Date(1752, 12, 31));
  EXPECT_FALSE(picker.Value());
  picker.SetValue(Date(1753, 1, 1));
  EXPECT_EQ(picker.Value(), Date(1753, 1, 1));
}

TEST_F(DatePickerTest, HoldsTheLastDayToItsEnd) {
  const DateTime evening = Date(9999, 12, 31) + std::chrono::hours(23);
  picker.SetValue(evening);
  EXPECT_EQ(picker.Value(), evening);
}

TEST_F(DatePickerTest, ChangeIsReportedOncePerChange) {
  int changes = 0;
  picker.Change = [&] { ++changes; };
  picker.SetValue(Date(2000, 1, 1));
  picker.UserPicks(Date(2000, 1, 1));
  picker.UserPicks(std::nullopt);
  EXPECT_EQ(changes, 2);
}

TEST_F(DatePickerTest, ADisabledPickerTakesNoDate) {
  picker.SetEnabled(false);
  picker.UserPicks(Date(2000, 1, 1));
  EXPECT_FALSE(picker.Value());
}

struct UpDownTest : InputsTest {
  TextBox box{form, {}, 3};
  UpDown arrows{form, {}, box, {.Min = 0, .Max = 150, .Step = 5}};
};

TEST_F(UpDownTest, CountsTheBuddysNumberInSteps) {
  box.SetText(u"30");
  arrows.UserSteps(2);
  EXPECT_EQ(box.Text(), u"40");
  arrows.UserSteps(-1);
  EXPECT_EQ(box.Text(), u"35");
}

TEST_F(UpDownTest, ABuddyWithoutANumberCountsAsZero) {
  box.SetText(u"x");
  arrows.UserSteps(1);
  EXPECT_EQ(box.Text(), u"5");
}

TEST_F(UpDownTest, StaysInItsRange) {
  box.SetText(u"999");
  arrows.UserSteps(1);
  EXPECT_EQ(box.Text(), u"150");
  arrows.UserSteps(-100);
  EXPECT_EQ(box.Text(), u"0");
}

TEST_F(UpDownTest, LeavesADisabledBuddyAlone) {
  box.SetText(u"30");
  box.SetEnabled(false);
  arrows.UserSteps(1);
  EXPECT_EQ(box.Text(), u"30");
}

TEST_F(InputsTest, ATextBoxHasTheWindowsColourUntilToldOtherwise) {
  TextBox box(form, {});
  EXPECT_EQ(box.BackColor(), kSystemWindowBackground);
  box.SetBackColor(kSystemButtonFace);
  EXPECT_EQ(box.BackColor(), kSystemButtonFace);
}

}  // namespace
}  // namespace ktrv::controls
