#include "controls/RowSet.h"

#include <gtest/gtest.h>

namespace ktrv::controls {
namespace {

TEST(RowSetTest, RowsAreFoundInBothDirections) {
  RowSet rows(200);
  EXPECT_TRUE(rows.IsEmpty());
  for (const std::size_t row :
       {std::size_t{0}, std::size_t{63}, std::size_t{64}, std::size_t{199}}) {
    rows.Add(row);
  }
  EXPECT_FALSE(rows.IsEmpty());
  EXPECT_TRUE(rows.Contains(63));
  EXPECT_FALSE(rows.Contains(62));
  EXPECT_EQ(rows.NextFrom(0), 0U);
  EXPECT_EQ(rows.NextFrom(1), 63U);
  EXPECT_EQ(rows.NextFrom(65), 199U);
  EXPECT_EQ(rows.PreviousFrom(199), 199);
  EXPECT_EQ(rows.PreviousFrom(198), 64);
  EXPECT_EQ(rows.PreviousFrom(62), 0);
}

TEST(RowSetTest, BeyondTheLastRowThereIsNone) {
  RowSet rows(130);
  rows.Add(100);
  EXPECT_EQ(rows.NextFrom(101), 130U);
  EXPECT_EQ(rows.PreviousFrom(99), -1);
  EXPECT_TRUE(RowSet(0).IsEmpty());
}

TEST(RowSetTest, AnIntersectionKeepsTheCommonRows) {
  RowSet rows(70);
  rows.Add(3);
  rows.Add(65);
  RowSet other(70);
  other.Add(65);
  rows.Intersect(other);
  EXPECT_EQ(rows.NextFrom(0), 65U);
}

}  // namespace
}  // namespace ktrv::controls
