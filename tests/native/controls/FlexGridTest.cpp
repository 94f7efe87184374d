#include "controls/FlexGrid.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "common/Error.h"
#include "controls/Form.h"
#include "tests/native/adversary/FailingAllocations.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::controls {
namespace {

struct FlexGridTest : testing::Test {
  void Fill(const std::vector<String>& names) {
    grid.Reset(1, 2);
    for (const String& name : names) grid.AddItem(u"\t" + name);
  }
  std::vector<String> Names() const {
    std::vector<String> names;
    for (int row = 1; row < grid.Rows(); ++row) names.push_back(grid.Text(row, 1));
    return names;
  }

  tests::ScriptedScreen screen;
  Form form{screen, {}};
  FlexGrid grid{form, {}};
};

TEST_F(FlexGridTest, RowsCountWithTheHeading) {
  grid.Reset(2, 2);
  EXPECT_EQ(grid.Rows(), 2);
  EXPECT_EQ(grid.Cols(), 2);
  EXPECT_EQ(grid.Text(1, 1), u"");
}

TEST_F(FlexGridTest, ANewGridIsAResetOne) {
  EXPECT_EQ(grid.Rows(), 2);
  EXPECT_EQ(grid.Cols(), 2);
}

TEST_F(FlexGridTest, ItemsAreSplitAtTabsFromColumnZeroOn) {
  grid.Reset(1, 3);
  grid.AddItem(u"a\tb");
  grid.AddItem(u"a\tb\tc\td");
  EXPECT_EQ(grid.Text(1, 1), u"b");
  EXPECT_EQ(grid.Text(1, 2), u"");
  EXPECT_EQ(grid.Text(2, 2), u"c");
}

TEST_F(FlexGridTest, TextsOfARowMayHoldTabs) {
  grid.Reset(1, 3);
  grid.AddRow({u"a", u"b\tc"});
  grid.AddRow({u"a", u"b", u"c", u"d"});
  EXPECT_EQ(grid.Text(1, 1), u"b\tc");
  EXPECT_EQ(grid.Text(1, 2), u"");
  EXPECT_EQ(grid.Text(2, 2), u"c");
}

TEST_F(FlexGridTest, ColumnsAreFoundByKeyRegardlessOfCase) {
  grid.Reset(1, 3);
  grid.ColumnAt(2).Key = u"NAME";
  EXPECT_EQ(grid.ColIndex(u"name"), 2);
  EXPECT_EQ(grid.ColIndex(u"EMAIL"), -1);
}

TEST_F(FlexGridTest, RowZeroIsTheHeading) {
  grid.Reset(1, 2);
  grid.SetText(0, 1, u"Name");
  EXPECT_EQ(grid.ColumnAt(1).Heading, u"Name");
  EXPECT_EQ(grid.Text(0, 1), u"Name");
}

TEST_F(FlexGridTest, ACellOutsideIsRefused) {
  EXPECT_THROW(grid.Text(2, 0), Error);
  EXPECT_THROW(grid.Text(0, 2), Error);
  EXPECT_THROW(grid.Text(-1, 0), Error);
  EXPECT_THROW(grid.SetRow(2), Error);
  EXPECT_THROW(grid.RemoveItem(0), Error);
}

TEST_F(FlexGridTest, TheFixedColumnMayRepeatAnother) {
  grid.Reset(1, 2);
  grid.FixedColumnShows = 1;
  grid.AddItem(u"x\tb");
  grid.AddItem(u"x\ta");
  EXPECT_EQ(grid.Text(1, 0), u"b");
  grid.UserClicksHeading(0);
  EXPECT_EQ(grid.Text(1, 0), u"a");
  grid.UserClicksHeading(0);
  EXPECT_EQ(grid.Text(1, 0), u"b");
}

TEST_F(FlexGridTest, AllSelectedRowsGoAtOnce) {
  Fill({u"a", u"b", u"c", u"d", u"e"});
  grid.UserSelects({1, 3, 4}, 3);
  grid.RemoveSelected();
  EXPECT_EQ(Names(), (std::vector<String>{u"b", u"e"}));
  EXPECT_EQ(grid.Row(), 0);
  EXPECT_TRUE(grid.SelectedRows().empty());
  grid.AddItem(u"\tf");
  EXPECT_EQ(Names(), (std::vector<String>{u"b", u"e", u"f"}));
}

TEST_F(FlexGridTest, FindsThePrefixRegardlessOfCaseFromARowOn) {
  Fill({u"Adam", u"Bert", u"adele"});
  EXPECT_EQ(grid.FindRow(u"ad", 1, 1), 1);
  EXPECT_EQ(grid.FindRow(u"aD", 2, 1), 3);
  EXPECT_EQ(grid.FindRow(u"dam", 1, 1), -1);
  EXPECT_EQ(grid.FindRow(u"bertha", 1, 1), -1);
}

TEST_F(FlexGridTest, FindsAccentedCapitals) {
  Fill({u"Zo\u00EB", u"\u00C9mile"});
  EXPECT_EQ(grid.FindRow(u"\u00E9M", 1, 1), 2);
}

TEST_F(FlexGridTest, AnEmptyTextMatchesTheFirstRow) {
  Fill({u"Adam"});
  EXPECT_EQ(grid.FindRow(u"", 1, 1), 1);
}

TEST_F(FlexGridTest, SortsInTheUsersLanguage) {
  Fill({u"Zoe", u"\u00E9mile", u"Emma", u"adam"});
  grid.Sort(1, SortOrder::Ascending);
  EXPECT_EQ(Names(), (std::vector<String>{u"adam", u"\u00E9mile", u"Emma", u"Zoe"}));
  grid.Sort(1, SortOrder::Descending);
  EXPECT_EQ(Names(), (std::vector<String>{u"Zoe", u"Emma", u"\u00E9mile", u"adam"}));
}

TEST_F(FlexGridTest, RowsAlikeKeepTheirOrderBothWays) {
  grid.Reset(1, 3);
  for (const char16_t* item : {u"\tb\t1", u"\ta\t2", u"\tb\t3", u"\ta\t4"}) grid.AddItem(item);
  const auto numbers = [&] {
    String text;
    for (int row = 1; row < grid.Rows(); ++row) text += grid.Text(row, 2);
    return text;
  };
  grid.Sort(1, SortOrder::Ascending);
  EXPECT_EQ(numbers(), u"2413");
  grid.Sort(1, SortOrder::None);
  grid.Sort(1, SortOrder::Descending);
  EXPECT_EQ(numbers(), u"1324");
}

TEST_F(FlexGridTest, LongCommonBeginningsSortByWhatFollows) {
  Fill({u"Maximilian Weber", u"Maximilian Adler", u"Maximilian"});
  grid.Sort(1, SortOrder::Ascending);
  EXPECT_EQ(Names(),
            (std::vector<String>{u"Maximilian", u"Maximilian Adler", u"Maximilian Weber"}));
}

TEST_F(FlexGridTest, UnsortedTheRowsStandAsTheyCame) {
  Fill({u"c", u"a", u"b"});
  grid.Sort(1, SortOrder::Ascending);
  grid.Sort(1, SortOrder::None);
  EXPECT_EQ(Names(), (std::vector<String>{u"c", u"a", u"b"}));
}

TEST_F(FlexGridTest, TheCurrentAndTheSelectedRowsStaySoWhenSorted) {
  Fill({u"c", u"a", u"b"});
  grid.UserSelects({1, 3}, 3);
  grid.Sort(1, SortOrder::Ascending);
  EXPECT_EQ(grid.SelectedRows(), (std::vector<int>{2, 3}));
  EXPECT_EQ(grid.Text(grid.Row(), 1), u"b");
}

TEST_F(FlexGridTest, AnItemAddedToASortedGridStandsLast) {
  Fill({u"c", u"a"});
  grid.Sort(1, SortOrder::Ascending);
  grid.AddItem(u"\tb");
  EXPECT_EQ(Names(), (std::vector<String>{u"a", u"c", u"b"}));
  grid.Sort(1, SortOrder::Ascending);
  EXPECT_EQ(Names(), (std::vector<String>{u"a", u"b", u"c"}));
}

TEST_F(FlexGridTest, RemovingFromASortedGridTakesTheShownRow) {
  Fill({u"c", u"a", u"b"});
  grid.Sort(1, SortOrder::Ascending);
  grid.RemoveItem(1);
  EXPECT_EQ(Names(), (std::vector<String>{u"b", u"c"}));
  grid.Sort(1, SortOrder::None);
  EXPECT_EQ(Names(), (std::vector<String>{u"c", u"b"}));
}

TEST_F(FlexGridTest, RemovingARowMovesTheCurrentOneAndTheSelection) {
  Fill({u"a", u"b", u"c"});
  grid.UserSelects({1, 3}, 3);
  grid.RemoveItem(2);
  EXPECT_EQ(grid.Row(), 2);
  EXPECT_EQ(grid.SelectedRows(), (std::vector<int>{1, 2}));
  grid.RemoveItem(2);
  EXPECT_EQ(grid.Row(), 0);
  EXPECT_EQ(grid.SelectedRows(), (std::vector<int>{1}));
}

TEST_F(FlexGridTest, AClickOnAHeadingSortsAndTurnsTheOrder) {
  Fill({u"b", u"a"});
  std::vector<SortOrder> orders;
  grid.AfterSort = [&](int, SortOrder order) { orders.push_back(order); };
  grid.UserClicksHeading(1);
  EXPECT_EQ(Names(), (std::vector<String>{u"a", u"b"}));
  grid.UserClicksHeading(1);
  grid.UserClicksHeading(1);
  EXPECT_EQ(orders, (std::vector<SortOrder>{SortOrder::Ascending, SortOrder::Descending,
                                            SortOrder::Ascending}));
}

/// More rows than are sorted at once: "Name 19999" to "Name 10000".
struct ManyRowsTest : FlexGridTest {
  ManyRowsTest() {
    std::vector<String> names;
    for (int row = 20001; --row >= 5000;) names.push_back(u"Name " + ToDecimal(10000 + row));
    Fill(names);
    grid.AfterSort = [this](int, SortOrder order) { orders.push_back(order); };
  }
  bool Sorts() {
    return screen.WaitUntil([this] { return !grid.IsSorting(); });
  }
  bool AreInOrder() const {
    const std::vector<String> names = Names();
    return std::is_sorted(names.begin(), names.end());
  }
  std::vector<SortOrder> orders;
};

TEST_F(ManyRowsTest, AClickOnAHeadingSortsThemToo) {
  grid.SetRow(1);
  const String current = grid.Text(1, 1);
  grid.UserClicksHeading(1);
  ASSERT_TRUE(Sorts());
  EXPECT_TRUE(AreInOrder());
  EXPECT_EQ(orders, (std::vector<SortOrder>{SortOrder::Ascending}));
  EXPECT_EQ(grid.Row(), grid.Rows() - 1);
  EXPECT_EQ(grid.Text(grid.Row(), 1), current);
}

TEST_F(ManyRowsTest, RowsThatComeAndGoMeanwhileAreSortedToo) {
  grid.UserClicksHeading(1);
  grid.AddItem(u"\tA");
  grid.RemoveItem(1);
  grid.SetText(1, 1, u"B");
  grid.UserClicksHeading(1);  // the other way round, or again if it was done already
  grid.SortInSlices(1, SortOrder::Ascending);
  grid.AddItem(u"\tC");
  grid.SortInSlices(1, SortOrder::Ascending);
  ASSERT_TRUE(Sorts());
  EXPECT_TRUE(AreInOrder());
  EXPECT_EQ(grid.Text(3, 1), u"C");
}

TEST_F(ManyRowsTest, RowsThatAreReplacedAreNotSorted) {
  grid.UserClicksHeading(1);
  orders.clear();
  Fill({u"b", u"a"});
  screen.Pump();
  EXPECT_EQ(Names(), (std::vector<String>{u"b", u"a"}));
  EXPECT_TRUE(orders.empty());
}

TEST_F(FlexGridTest, AClickOnAHeadingWhoseOrderWasLostRestoresIt) {
  Fill({u"b", u"a"});
  grid.UserClicksHeading(1);
  grid.AddItem(u"\t0");
  grid.UserClicksHeading(1);
  EXPECT_EQ(Names(), (std::vector<String>{u"0", u"a", u"b"}));
}

TEST_F(FlexGridTest, InsertedRowsGetTheirPlaces) {
  Fill({u"b", u"d"});
  grid.SelectAll();
  grid.InsertRows({{1, {u"", u"a"}}, {3, {u"", u"c"}}, {9, {u"", u"e", u"too many"}}});
  EXPECT_EQ(Names(), (std::vector<String>{u"a", u"b", u"c", u"d", u"e"}));
  EXPECT_TRUE(grid.SelectedRows().empty());
  EXPECT_EQ(grid.Row(), 0);
  grid.AddItem(u"\tf");
  EXPECT_EQ(Names().back(), u"f");
}

TEST_F(FlexGridTest, RowsOfManyRangesAreSelected) {
  Fill({u"a", u"b", u"c", u"d"});
  RowSelection rows;
  rows.Add(2, 2);
  rows.Add(4, 9);
  grid.SelectRows(rows);
  EXPECT_EQ(grid.SelectedRows(), (std::vector<int>{2, 4}));
  EXPECT_EQ(grid.Row(), 2);
  grid.SelectRows(RowSelection());
  EXPECT_TRUE(grid.SelectedRows().empty());
  EXPECT_EQ(grid.Row(), 0);
}

TEST_F(FlexGridTest, RowsThatAreNotSelectedGoToo) {
  Fill({u"a", u"b", u"c"});
  grid.SetRow(1);
  RowSelection rows;
  rows.Add(2, 3);
  grid.RemoveRows(rows);
  EXPECT_EQ(Names(), (std::vector<String>{u"a"}));
  EXPECT_TRUE(grid.SelectedRows().empty());
}

TEST_F(FlexGridTest, AClickOnAHeadingDoesNothingWhenTheUserMayNotSort) {
  Fill({u"b", u"a"});
  grid.UserCanSort = false;
  grid.UserClicksHeading(1);
  EXPECT_EQ(Names(), (std::vector<String>{u"b", u"a"}));
}

TEST_F(FlexGridTest, TheCurrentRowIsTheOnlySelectedOne) {
  Fill({u"a", u"b"});
  grid.SelectAll();
  EXPECT_EQ(grid.SelectedRows(), (std::vector<int>{1, 2}));
  grid.SetRow(2);
  EXPECT_EQ(grid.SelectedRows(), (std::vector<int>{2}));
  grid.SetRow(0);
  EXPECT_TRUE(grid.SelectedRows().empty());
}

TEST_F(FlexGridTest, AnEmptyGridHasNothingToSelect) {
  grid.Reset(1, 2);
  grid.SelectAll();
  EXPECT_TRUE(grid.SelectedRows().empty());
}

TEST_F(FlexGridTest, TheDisplaysSelectionIsKeptInsideTheRows) {
  Fill({u"a", u"b"});
  grid.UserSelects({0, 2, 7}, 7);
  EXPECT_EQ(grid.SelectedRows(), (std::vector<int>{2}));
  EXPECT_EQ(grid.Row(), 0);
  grid.UserSelectsRange(1, 2, true, 1);
  grid.UserSelectsRange(2, 2, false, 1);
  EXPECT_EQ(grid.SelectedRows(), (std::vector<int>{1}));
  EXPECT_EQ(grid.Row(), 1);
}

TEST_F(FlexGridTest, ARowThatIsNotSelectedIsNotChosen) {
  Fill({u"a", u"b", u"c"});
  EXPECT_EQ(grid.ChosenRow(), 0);
  grid.UserSelects({1}, 3);
  EXPECT_EQ(grid.ChosenRow(), 1);
  grid.UserSelects({1, 2}, 2);
  EXPECT_EQ(grid.ChosenRow(), 2);
  grid.UserSelects({1, 2}, 3);
  EXPECT_EQ(grid.ChosenRow(), 0);
  grid.UserSelects({}, 3);
  EXPECT_EQ(grid.ChosenRow(), 0);
}

TEST_F(FlexGridTest, AWidthThatTheUserSetOutlastsTheColumns) {
  grid.ColumnAt(1) = {.Key = u"NAME", .Width = 3000};
  grid.UserSizesColumn(1, 1200);
  EXPECT_EQ(grid.ColumnAt(1).Width, 1200);
  grid.Reset(3, 3);
  grid.ColumnAt(2) = {.Key = u"NAME", .Width = 3000};
  grid.ColumnAt(1) = {.Key = u"CITY", .Width = 500};
  grid.ColumnsChanged();
  EXPECT_EQ(grid.ColumnAt(2).Width, 1200);
  EXPECT_EQ(grid.ColumnAt(1).Width, 500);
}

TEST_F(FlexGridTest, EveryChangeOfTheSelectionIsReported) {
  Fill({u"a", u"b", u"c"});
  int changes = 0;
  grid.SelectionChange = [&] { ++changes; };
  const auto reports = [&](const std::function<void()>& change) {
    const int before = changes;
    change();
    return changes > before;
  };
  EXPECT_TRUE(reports([&] { grid.SetRow(1); }));
  EXPECT_TRUE(reports([&] { grid.SelectRows(1, 2); }));
  EXPECT_TRUE(reports([&] { grid.SelectAll(); }));
  EXPECT_TRUE(reports([&] { grid.UserSelects({1}, 1); }));
  EXPECT_TRUE(reports([&] { grid.UserSelectsRange(1, 2, true, 1); }));
  EXPECT_TRUE(reports([&] { grid.RemoveItem(1); }));
  EXPECT_TRUE(reports([&] { grid.RemoveSelected(); }));
  EXPECT_TRUE(reports([&] { grid.Reset(2, 2); }));
}

TEST_F(FlexGridTest, AHeadingThatSaysAscendingIsReversedFirst) {
  grid.SetHeadingPicture(1, Image::SortAscending);
  SortOrder order = SortOrder::None;
  grid.AfterSort = [&](int, SortOrder sorted) { order = sorted; };
  grid.UserClicksHeading(1);
  EXPECT_EQ(order, SortOrder::Descending);
}

TEST_F(FlexGridTest, ARowThatIsNotAddedForWantOfMemoryIsNotThere) {
  const String name(50, u'x');
  for (std::int64_t failing = 1, added = 0; added == 0; ++failing) {
    Fill({name, name, name, name});
    grid.RemoveItem(2);
    tests::FailingAllocations::FailAt(failing);
    try {
      const tests::FailingAllocations::Scope counted;
      grid.AddItem(u"\t" + name);
      added = failing;
    } catch (const std::bad_alloc&) {
    }
    tests::FailingAllocations::FailAt(0);
    EXPECT_GE(Names().size(), added ? 4U : 3U) << failing;
    for (const String& each : Names()) EXPECT_EQ(each, name) << failing;
  }
}

}  // namespace
}  // namespace ktrv::controls
