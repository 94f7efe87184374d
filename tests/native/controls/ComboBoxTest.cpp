#include "controls/ComboBox.h"

#include <gtest/gtest.h>

#include "common/Error.h"
#include "controls/Form.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::controls {
namespace {

template <class Body>
std::int32_t NumberOf(Body&& body) {
  try {
    body();
  } catch (const Error& error) {
    return error.Number();
  }
  return 0;
}

struct ComboBoxTest : testing::Test {
  ComboBoxTest() {
    list.AddItem(u"Alpha", 10);
    list.AddItem(u"Beta", 20);
    list.Click = [this] { ++clicks; };
  }
  tests::ScriptedScreen screen;
  Form form{screen, {}};
  ComboBox list{form, {}};
  int clicks = 0;
};

TEST_F(ComboBoxTest, NothingIsChosenAtFirst) {
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(list.Text(), u"");
}

TEST_F(ComboBoxTest, ItemsCarryTextAndNumberInTheOrderOfAdding) {
  EXPECT_EQ(list.ListCount(), 2);
  EXPECT_EQ(list.List(1), u"Beta");
  EXPECT_EQ(list.ItemData(0), 10);
  EXPECT_EQ(NumberOf([&] { list.List(2); }), ErrorNumber::SubscriptOutOfRange);
}

TEST_F(ComboBoxTest, ChoosingReportsClickWhenItDiffers) {
  list.SetListIndex(1);
  list.SetListIndex(1);
  EXPECT_EQ(list.Text(), u"Beta");
  EXPECT_EQ(clicks, 1);
}

TEST_F(ComboBoxTest, AnIndexOutsideFailsAndTheChoiceStays) {
  list.SetListIndex(0);
  EXPECT_EQ(NumberOf([&] { list.SetListIndex(2); }), ErrorNumber::InvalidPropertyValue);
  EXPECT_EQ(NumberOf([&] { list.SetListIndex(-2); }), ErrorNumber::InvalidPropertyValue);
  EXPECT_EQ(list.ListIndex(), 0);
}

TEST_F(ComboBoxTest, ATextChoosesTheItemThatHasExactlyIt) {
  list.SetText(u"Beta");
  EXPECT_EQ(list.ListIndex(), 1);
}

TEST_F(ComboBoxTest, ATextThatNoItemHasFailsAndTheChoiceStays) {
  list.SetListIndex(1);
  EXPECT_EQ(NumberOf([&] { list.SetText(u"beta"); }), 383);
  EXPECT_EQ(list.ListIndex(), 1);
}

TEST_F(ComboBoxTest, TheEmptyTextChoosesNothing) {
  list.SetListIndex(1);
  list.SetText({});
  EXPECT_EQ(list.ListIndex(), -1);
}

TEST_F(ComboBoxTest, TheEmptyTextChoosesAnEmptyItem) {
  list.AddItem(u"");
  list.SetText({});
  EXPECT_EQ(list.ListIndex(), 2);
}

TEST_F(ComboBoxTest, ClearTakesTheItemsAndTheChoice) {
  list.SetListIndex(1);
  list.Clear();
  EXPECT_EQ(list.ListCount(), 0);
  EXPECT_EQ(list.ListIndex(), -1);
}

TEST_F(ComboBoxTest, TheUserOfADisabledListChoosesNothing) {
  list.SetEnabled(false);
  list.UserChooses(1);
  EXPECT_EQ(list.ListIndex(), -1);
}

}  // namespace
}  // namespace ktrv::controls
