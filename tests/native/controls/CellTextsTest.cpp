#include "controls/CellTexts.h"

#include <gtest/gtest.h>

namespace ktrv::controls {
namespace {

TEST(CellTextsTest, EachCellHasItsText) {
  const CellTexts cells({u"", u"Anna", u"", u"46 70"});
  EXPECT_EQ(cells.At(0), u"");
  EXPECT_EQ(cells.At(1), u"Anna");
  EXPECT_EQ(cells.At(2), u"");
  EXPECT_EQ(cells.At(3), u"46 70");
  EXPECT_EQ(cells.At(4), u"");
}

TEST(CellTextsTest, RowWithoutCellsHasNoText) {
  EXPECT_EQ(CellTexts().At(0), u"");
  EXPECT_EQ(CellTexts(std::vector<String>()).At(1), u"");
}

TEST(CellTextsTest, LongTextsAreKeptWhole) {
  const String longText(200000, u'x');
  const CellTexts cells({longText, u"a", longText + u"y", u"b"});
  EXPECT_EQ(cells.At(0), longText);
  EXPECT_EQ(cells.At(1), u"a");
  EXPECT_EQ(cells.At(2), longText + u"y");
  EXPECT_EQ(cells.At(3), u"b");
}

TEST(CellTextsTest, ChangedCellLeavesTheOthers) {
  CellTexts cells({u"1", u"Anna"});
  cells.Set(0, u"longer than before");
  cells.Set(3, u"new");
  EXPECT_EQ(cells.At(0), u"longer than before");
  EXPECT_EQ(cells.At(1), u"Anna");
  EXPECT_EQ(cells.At(2), u"");
  EXPECT_EQ(cells.At(3), u"new");
  cells.Set(1, {});
  EXPECT_EQ(cells.At(1), u"");
  EXPECT_EQ(cells.At(3), u"new");
}

}  // namespace
}  // namespace ktrv::controls
