#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <utility>

#include "controls/FlexGrid.h"
#include "controls/Form.h"
#include "database/Recordset.h"
#include "tests/native/adversary/FailingAllocations.h"
#include "tests/native/support/FakeDriver.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::controls {
namespace {

using database::DataType;
using database::Recordset;

struct BoundGridTest : testing::Test {
  BoundGridTest() {
    driver.Answer(u"NAMES", {{u"ID", DataType::Integer}, {u"NAME"}},
                  {{u"1", u"c"}, {u"2", std::nullopt}, {u"3", u"a"}, {u"4", u"b"}});
    driver.Answer(u"NOTHING", {{u"ID", DataType::Integer}, {u"NAME"}}, {});
    grid.AfterDataRefresh = [this] { ++refreshes; };
  }
  void Open(StringView text) {
    rows.Location = database::CursorLocation::Client;
    rows.Open(text, u"DSN=Test");
  }
  std::vector<String> Names() const {
    std::vector<String> names;
    for (int row = 1; row < grid.Rows(); ++row) names.push_back(grid.Text(row, 2));
    return names;
  }

  tests::FakeDriver driver;
  tests::ScriptedScreen screen;
  database::Environment environment{[this](StringView) -> database::Driver& { return driver; },
                                    screen.Dispatcher.Post()};
  Recordset rows{environment};
  Form form{screen, {}};
  FlexGrid grid{form, {}};
  int refreshes = 0;
};

TEST_F(BoundGridTest, TheColumnsOfTheRecordsetStandBehindTheFixedOne) {
  Open(u"NAMES");
  grid.Bind(&rows);
  EXPECT_EQ(grid.Cols(), 3);
  EXPECT_EQ(grid.Rows(), 5);
  EXPECT_EQ(grid.Text(1, 0), u"");
  EXPECT_EQ(grid.Text(1, 1), u"1");
  EXPECT_EQ(grid.Text(1, 2), u"c");
  EXPECT_EQ(refreshes, 1);
}

TEST_F(BoundGridTest, WhenMemoryIsShortTheFormerRowsAreReadNoMore) {
  using tests::FailingAllocations;
  Open(u"NAMES");
  bool failed = true;
  for (int allocation = 1; failed; ++allocation) {
    auto former = std::make_unique<Recordset>(environment);
    former->Location = database::CursorLocation::Client;
    former->Open(u"NAMES", u"DSN=Test");
    grid.Bind(former.get());
    FailingAllocations::FailAt(allocation);
    try {
      const FailingAllocations::Scope counted;
      grid.Bind(&rows);
    } catch (const std::bad_alloc&) {
    }
    failed = FailingAllocations::HasFailed();
    FailingAllocations::FailAt(0);
    former.reset();
    EXPECT_EQ(Names(), (std::vector<String>{u"c", u"", u"a", u"b"}));
  }
}

TEST_F(BoundGridTest, NullIsAnEmptyText) {
  Open(u"NAMES");
  grid.Bind(&rows);
  EXPECT_EQ(grid.Text(2, 2), u"");
}

TEST_F(BoundGridTest, AResultWithoutRowsLeavesTheHeadingAlone) {
  Open(u"NOTHING");
  grid.Bind(&rows);
  EXPECT_EQ(grid.Rows(), 1);
  EXPECT_EQ(grid.Cols(), 3);
}

TEST_F(BoundGridTest, BoundToNothingItIsAResetGrid) {
  Open(u"NAMES");
  grid.Bind(&rows);
  grid.Bind(nullptr);
  EXPECT_EQ(grid.Rows(), 2);
  EXPECT_EQ(grid.Cols(), 2);
  EXPECT_EQ(refreshes, 2);
}

TEST_F(BoundGridTest, SortingLeavesTheRecordsetAsItIs) {
  Open(u"NAMES");
  grid.Bind(&rows);
  grid.Sort(2, SortOrder::Ascending);
  EXPECT_EQ(Names(), (std::vector<String>{u"", u"a", u"b", u"c"}));
  EXPECT_EQ(rows.CellText(0, 1), u"c");
}

TEST_F(BoundGridTest, ARefreshShowsTheRecordsetsOrderAndKeepsTheSelectedRows) {
  Open(u"NAMES");
  grid.Bind(&rows);
  grid.Sort(2, SortOrder::Ascending);
  grid.UserSelects({3, 4}, 4);
  grid.DataRefresh();
  EXPECT_EQ(Names(), (std::vector<String>{u"c", u"", u"a", u"b"}));
  EXPECT_EQ(grid.SelectedRows(), (std::vector<int>{1, 4}));
  EXPECT_EQ(grid.Row(), 1);
}

TEST_F(BoundGridTest, WhenMemoryIsShortNoOtherRowIsSelected) {
  using tests::FailingAllocations;
  Open(u"NAMES");
  const std::function<void()> changes[] = {[&] { grid.DataRefresh(); },
                                           [&] { grid.Sort(2, SortOrder::Descending); },
                                           [&] { grid.Sort(2, SortOrder::None); }};
  for (const auto& change : changes) {
    bool failed = true;
    for (int allocation = 1; failed; ++allocation) {
      grid.Bind(&rows);
      grid.Sort(2, SortOrder::Ascending);
      grid.UserSelects({2, 4}, 4);
      FailingAllocations::FailAt(allocation);
      try {
        const FailingAllocations::Scope counted;
        change();
      } catch (const std::bad_alloc&) {
      }
      failed = FailingAllocations::HasFailed();
      FailingAllocations::FailAt(0);
      for (const int row : grid.SelectedRows()) {
        EXPECT_TRUE(grid.Text(row, 2) == u"a" || grid.Text(row, 2) == u"c") << allocation;
      }
      EXPECT_TRUE(grid.Row() == 0 || grid.Text(grid.Row(), 2) == u"c") << allocation;
    }
  }
}

TEST_F(BoundGridTest, AChangedCellIsChangedInTheGridOnly) {
  Open(u"NAMES");
  grid.Bind(&rows);
  grid.Sort(2, SortOrder::Ascending);
  grid.SetText(4, 2, u"x");
  EXPECT_EQ(grid.Text(4, 2), u"x");
  EXPECT_EQ(rows.CellText(0, 1), u"c");
  grid.DataRefresh();
  EXPECT_EQ(grid.Text(1, 2), u"c");
}

TEST_F(BoundGridTest, AnAddedItemStandsBehindTheRecordsetsRowsUntilTheRefresh) {
  Open(u"NAMES");
  grid.Bind(&rows);
  grid.AddItem(u"\t9\tnew");
  EXPECT_EQ(grid.Rows(), 6);
  EXPECT_EQ(grid.Text(5, 2), u"new");
  grid.SetRow(5);
  grid.DataRefresh();
  EXPECT_EQ(grid.Rows(), 5);
  EXPECT_EQ(grid.Row(), 0);
}

TEST_F(BoundGridTest, ARowOfTheRecordsetCanBeRemovedFromTheGrid) {
  Open(u"NAMES");
  grid.Bind(&rows);
  grid.RemoveItem(1);
  EXPECT_EQ(Names(), (std::vector<String>{u"", u"a", u"b"}));
  EXPECT_EQ(rows.RecordCount(), 4);
}

/// What is found must not depend on the index that makes finding fast.
struct IndexedFindTest : BoundGridTest {
  IndexedFindTest() {
    driver.Answer(u"PEOPLE", {{u"ID"}, {u"NAME"}},
                  {{u"1", u"Bernadette"},
                   {u"2", std::nullopt},
                   {u"3", u"Bern"},
                   {u"4", u"ber"},
                   {u"5", u"\u00C9mile"}});
    Open(u"PEOPLE");
    grid.Bind(&rows);
    grid.SetSearchColumns({.Name = 2});
  }
};

TEST_F(IndexedFindTest, PrefixesShorterAndLongerThanAnIndexEntryAreFound) {
  EXPECT_EQ(grid.FindRow(u"", 1, 2), 1);
  EXPECT_EQ(grid.FindRow(u"\u00E9", 1, 2), 5);
  EXPECT_EQ(grid.FindRow(u"BERN", 2, 2), 3);
  EXPECT_EQ(grid.FindRow(u"bernad", 1, 2), 1);
  EXPECT_EQ(grid.FindRow(u"bernat", 1, 2), -1);
  EXPECT_EQ(grid.FindRow(u"ber", 4, 2), 4);
}

TEST_F(IndexedFindTest, NamesThatStartWithSignsAreFound) {
  driver.Answer(u"SIGNS", {{u"ID"}, {u"NAME"}},
                {{u"1", u"Anna"},
                 {u"2", u"(Anna)"},
                 {u"3", u" Anna"},
                 {u"4", u"-"},
                 {u"5", u"\u0345"},
                 {u"6", u"\u0399ota"}});
  rows.Close();
  Open(u"SIGNS");
  grid.Bind(&rows);
  const auto found = [&] {
    std::vector<int> places;
    for (const StringView text : {u"(", u"(an", u" ", u"-", u"--", u"+", u"\u0345", u""}) {
      for (int start = 1; start <= 6; ++start) places.push_back(grid.FindRow(text, start, 2));
    }
    return places;
  };
  grid.SetSearchColumns({});
  const std::vector<int> withoutIndex = found();
  grid.SetSearchColumns({.Name = 2});
  EXPECT_EQ(found(), withoutIndex);
  EXPECT_EQ(grid.FindRow(u"(", 1, 2), 2);
  EXPECT_EQ(grid.FindRow(u" ", 1, 2), 3);
  EXPECT_EQ(grid.FindRow(u"+", 1, 2), -1);
}

TEST_F(IndexedFindTest, SortedRowsAreFoundInTheirNewOrder) {
  grid.Sort(2, SortOrder::Ascending);
  EXPECT_EQ(grid.FindRow(u"ber", 1, 2), 2);
  EXPECT_EQ(grid.Text(2, 2), u"ber");
}

TEST_F(IndexedFindTest, ChangedAndAddedRowsAreFoundByWhatTheyShow) {
  grid.SetText(1, 2, u"Zoe");
  grid.AddItem(u"\t9\tZorro");
  EXPECT_EQ(grid.FindRow(u"zo", 1, 2), 1);
  EXPECT_EQ(grid.FindRow(u"zor", 1, 2), 6);
  EXPECT_EQ(grid.FindRow(u"bernadette", 1, 2), -1);
}

TEST_F(IndexedFindTest, RowsOfAnotherRecordsetAreNotSoughtInTheFormerOnesIndex) {
  rows.Close();
  Open(u"NAMES");
  grid.Bind(&rows);
  EXPECT_EQ(grid.FindRow(u"a", 1, 2), 3);
}

TEST_F(IndexedFindTest, AnotherColumnIsSearchedWithoutIt) {
  EXPECT_EQ(grid.FindRow(u"4", 1, 1), 4);
}

struct ArrivingRowsTest : BoundGridTest {
  ArrivingRowsTest() {
    rows.Location = database::CursorLocation::Client;
    rows.BackgroundFetchSize = 2;
    rows.FetchProgress = [this](std::int64_t, std::int64_t) { grid.RowsArrived(); };
    rows.FetchComplete = [this](const Error*, database::EventStatus) { complete = true; };
    driver.FetchGate.Close();
    rows.Open(u"NAMES", u"DSN=Test", {.Async = true});
    grid.Bind(&rows);
  }
  bool Arrive() {
    driver.FetchGate.Open();
    return screen.WaitUntil([this] { return complete; });
  }

  bool complete = false;
};

TEST_F(ArrivingRowsTest, BeforeTheFirstRowsTheGridIsEmptyAndKeepsItsColumns) {
  EXPECT_EQ(grid.Rows(), 1);
  EXPECT_EQ(grid.Cols(), 2);
}

TEST_F(ArrivingRowsTest, TheFirstRowsBringTheColumnsAndOneRefresh) {
  refreshes = 0;
  ASSERT_TRUE(Arrive());
  EXPECT_EQ(grid.Cols(), 3);
  EXPECT_EQ(grid.Rows(), 5);
  EXPECT_EQ(refreshes, 1);
}

TEST_F(ArrivingRowsTest, RowsThatArriveInASortedGridStandLast) {
  int arrivals = 0;
  rows.FetchProgress = [&](std::int64_t, std::int64_t) {
    grid.RowsArrived();
    if (++arrivals == 1) grid.Sort(2, SortOrder::Ascending);
  };
  ASSERT_TRUE(Arrive());
  EXPECT_EQ(Names(), (std::vector<String>{u"", u"c", u"a", u"b"}));
}

TEST_F(ArrivingRowsTest, RowsThatArriveInASortedGridAreNotLeftOutOfTheNextSort) {
  int arrivals = 0;
  rows.FetchProgress = [&](std::int64_t, std::int64_t) {
    grid.RowsArrived();
    if (++arrivals == 1) grid.Sort(2, SortOrder::Ascending);
  };
  ASSERT_TRUE(Arrive());
  grid.Sort(2, SortOrder::Ascending);
  EXPECT_EQ(Names(), (std::vector<String>{u"", u"a", u"b", u"c"}));
}

TEST_F(ArrivingRowsTest, RowsThatHaveComeAreFoundWhileOthersStillCome) {
  std::vector<int> found;
  rows.FetchProgress = [&](std::int64_t, std::int64_t) {
    grid.RowsArrived();
    grid.SetSearchColumns({.Name = 2});
    found.push_back(grid.FindRow(u"A", 1, 2));
  };
  ASSERT_TRUE(Arrive());
  ASSERT_GE(found.size(), 2U);
  EXPECT_EQ(found.front(), -1);
  EXPECT_EQ(found.back(), 3);
}

TEST_F(ArrivingRowsTest, ARefreshLeavesNoRowThatCannotBeFound) {
  bool isFirst = true;
  rows.FetchProgress = [&](std::int64_t, std::int64_t) {
    if (!std::exchange(isFirst, false)) return;
    grid.RowsArrived();
    grid.SetSearchColumns({.Name = 2});
  };
  ASSERT_TRUE(Arrive());
  grid.DataRefresh();
  EXPECT_EQ(grid.FindRow(u"A", 1, 2), 3);
}

}  // namespace
}  // namespace ktrv::controls
