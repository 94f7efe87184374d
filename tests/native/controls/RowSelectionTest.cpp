#include "controls/RowSelection.h"

#include <gtest/gtest.h>

namespace ktrv::controls {
namespace {

using Ranges = std::vector<RowSelection::Range>;

TEST(RowSelection, RangesThatTouchBecomeOne) {
  RowSelection selection;
  selection.Add(5, 7);
  selection.Add(1, 2);
  selection.Add(3, 4);
  EXPECT_EQ(selection.Ranges(), (Ranges{{1, 7}}));
}

TEST(RowSelection, RangesApartStayApartAndInOrder) {
  RowSelection selection;
  selection.Add(10, 12);
  selection.Add(1, 2);
  selection.Add(4, 4);
  EXPECT_EQ(selection.Ranges(), (Ranges{{1, 2}, {4, 4}, {10, 12}}));
  EXPECT_EQ(selection.Rows(), (std::vector<int>{1, 2, 4, 10, 11, 12}));
}

TEST(RowSelection, ARangeOverOthersTakesThemIn) {
  RowSelection selection;
  selection.Add(3, 4);
  selection.Add(8, 9);
  selection.Add(2, 10);
  EXPECT_EQ(selection.Ranges(), (Ranges{{2, 10}}));
}

TEST(RowSelection, RemovingFromTheMiddleLeavesBothEnds) {
  RowSelection selection;
  selection.Add(1, 10);
  selection.Remove(4, 6);
  EXPECT_EQ(selection.Ranges(), (Ranges{{1, 3}, {7, 10}}));
  EXPECT_FALSE(selection.Contains(5));
  EXPECT_TRUE(selection.Contains(7));
}

TEST(RowSelection, RemovingAcrossRangesCutsThem) {
  RowSelection selection;
  selection.Add(1, 3);
  selection.Add(5, 7);
  selection.Add(9, 11);
  selection.Remove(3, 9);
  EXPECT_EQ(selection.Ranges(), (Ranges{{1, 2}, {10, 11}}));
}

TEST(RowSelection, RowsBehindAGoneRowMoveUp) {
  RowSelection selection;
  selection.Add(1, 2);
  selection.Add(4, 5);
  selection.RowGone(3);
  EXPECT_EQ(selection.Ranges(), (Ranges{{1, 4}}));
  selection.RowGone(2);
  EXPECT_EQ(selection.Ranges(), (Ranges{{1, 3}}));
}

TEST(RowSelection, AMillionRowsAreOneRange) {
  RowSelection selection;
  selection.Add(1, 1'000'000);
  EXPECT_EQ(selection.Ranges().size(), 1U);
  EXPECT_EQ(selection.Count(), 1'000'000);
}

}  // namespace
}  // namespace ktrv::controls
