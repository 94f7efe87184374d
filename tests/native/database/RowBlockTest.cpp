#include "database/RowBlock.h"

#include <gtest/gtest.h>

#include "database/RowStore.h"

namespace ktrv::database {
namespace {

TEST(RowBlock, KeepsTextsEmptyTextsAndNullsApart) {
  RowBlock block(3);
  block.BeginRow();
  block.Add(u"a");
  block.Add(u"");
  block.AddNull();
  EXPECT_EQ(block.Cell(0, 0), u"a");
  EXPECT_EQ(block.Cell(0, 1), u"");
  EXPECT_EQ(block.Cell(0, 2), std::nullopt);
}

TEST(RowBlock, LongTextsDoNotDisturbTheirNeighbours) {
  for (const std::size_t length : {65533u, 65534u, 65535u, 65536u, 200001u}) {
    RowBlock block(4);
    for (int row = 0; row < 2; ++row) {
      block.BeginRow();
      block.Add(u"x");
      block.Add(String(length, u'l'));
      block.AddNull();
      block.Add(u"y");
    }
    block.Finish();
    EXPECT_EQ(block.Cell(1, 0), u"x");
    EXPECT_TRUE(block.Cell(1, 1) == String(length, u'l')) << length;
    EXPECT_EQ(block.Cell(1, 2), std::nullopt);
    EXPECT_EQ(block.Cell(1, 3), u"y");
  }
}

TEST(RowBlock, ReadsTheSameCellsOfAWholeRow) {
  RowBlock block(5);
  for (const StringView first : {u"a", u""}) {
    block.BeginRow();
    block.Add(first);
    block.Add(String(65534, u'l'));
    block.AddNull();
    block.Add(u"");
    block.Add(u"z");
  }
  std::vector<std::optional<StringView>> cells(5, u"of the row before");
  for (std::size_t row = 0; row < block.Rows(); ++row) {
    block.ReadRow(row, cells);
    for (std::size_t column = 0; column < cells.size(); ++column) {
      EXPECT_TRUE(cells[column] == block.Cell(row, column)) << row << ", " << column;
    }
  }
}

std::unique_ptr<RowBlock> BlockOf(std::initializer_list<StringView> rows) {
  auto block = std::make_unique<RowBlock>(1);
  for (const StringView row : rows) {
    block->BeginRow();
    block->Add(row);
  }
  return block;
}

TEST(RowStore, FindsRowsAcrossBlocks) {
  RowStore rows;
  rows.Append(BlockOf({u"a"}));
  rows.Append(BlockOf({u"b", u"c"}));
  rows.Append(BlockOf({u"d"}));
  String all;
  for (std::int64_t row = 0; row < rows.Count(); ++row) all += *rows.Cell(row, 0);
  EXPECT_EQ(all, u"abcd");
}

TEST(RowStore, ReplacedRowShowsTheNewCellsAndKeepsOldViewsValid) {
  RowStore rows;
  rows.Append(BlockOf({u"a", u"b"}));
  rows.Replace(1, BlockOf({u"first"}));
  const StringView view = *rows.Cell(1, 0);
  rows.Replace(1, BlockOf({u"second"}));
  EXPECT_EQ(view, u"first");
  EXPECT_EQ(rows.Cell(1, 0), u"second");
  EXPECT_EQ(rows.Cell(0, 0), u"a");
}

}  // namespace
}  // namespace ktrv::database
