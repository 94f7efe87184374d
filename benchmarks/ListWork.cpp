#include "benchmarks/ListWork.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <stdexcept>

#include "benchmarks/Table.h"
#include "benchmarks/UserInterfaceLoop.h"
#include "controls/FlexGrid.h"
#include "controls/Form.h"
#include "data/AddressBookQueries.h"
#include "database/Recordset.h"
#include "database/odbc/OdbcDriver.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::benchmarks {
namespace {

using controls::SortOrder;
using Keys = std::vector<std::string>;

constexpr int kRounds = 5;
// Of the grid; one less in the recordset.
constexpr int kNameColumn = 2;
constexpr int kMobileColumn = 4;
constexpr int kOrganisationColumn = 7;

double TimeOf(const std::function<void()>& work) {
  const auto start = Clock::now();
  work();
  return SecondsSince(start);
}

/// The whole address book in a grid on a screen without output.
struct LoadedGrid {
  explicit LoadedGrid(const std::string& path) {
    rows.Location = database::CursorLocation::Client;
    rows.Open(data::AddressBookQueries::RootItems(data::Dialect::Sql),
              u"Driver=SQLite3;Database=" + FromUtf8(path));
    grid.Bind(&rows);
    IndexTime = TimeOf([this] {
      grid.SetSearchColumns(
          {.Name = kNameColumn, .Company = kOrganisationColumn, .Number = kMobileColumn});
    });
  }

  StringView Name(std::int64_t row) const {
    return rows.CellText(row, kNameColumn - 1).value_or(StringView());
  }

  database::OdbcDriver driver;
  tests::ScriptedScreen screen;
  database::Recordset rows{database::Environment{
      [this](StringView) -> database::Driver& { return driver; }, screen.Dispatcher.Post()}};
  controls::Form form{screen, {}};
  controls::FlexGrid grid{form, {}};
  double IndexTime = 0;
};

String LastWord(StringView name) {
  return String(name.substr(std::min(name.rfind(u' ') + 1, name.size())));
}

/// The slowest keystroke of searches for names near both ends of the list, by their start and by
/// their last word, for several words, a number, and texts that are missing; and the slowest key
/// that goes on. Compared with the minimum work: reading the first letter of each name.
void MeasureFind(const LoadedGrid& loaded, Table& table) {
  const std::int64_t count = loaded.rows.RecordCount();
  const StringView first = loaded.Name(0);
  const StringView last = loaded.Name(count - 1);
  double worst = 0;
  double worstNext = 0;
  for (const String& wanted :
       {String(first), String(last), LastWord(first), LastWord(last), String(last) + u" x",
        LastWord(last) + u" " + String(last), String(u"\u00D8ystein Qvist"), String(u"qqq"),
        String(u"+49 (30) 7654321 000")}) {
    for (std::size_t length = 1; length <= wanted.size(); ++length) {
      const StringView typed = StringView(wanted).substr(0, length);
      int row = -1;
      worst = std::max(worst, TimeOf([&] { row = loaded.grid.FindFirst(typed, 1); }));
      for (const bool backward : {false, true}) {
        worstNext = std::max(
            worstNext, TimeOf([&] { loaded.grid.FindNext(typed, std::max(row, 0), backward); }));
      }
    }
  }
  std::vector<double> floor;
  for (int round = 0; round < kRounds; ++round) {
    std::int64_t found = 0;
    floor.push_back(TimeOf([&] {
      for (std::int64_t row = 0; row < count; ++row) {
        const StringView name = loaded.Name(row);
        found += !name.empty() && name.front() == u'\u00D8' ? 1 : 0;
      }
    }));
    if (found > count) throw std::logic_error("more names than rows");
  }
  const auto add = [&](const char* what, double time) {
    table.Add({what, std::to_string(count), Milliseconds(time), Milliseconds(Median(floor)),
               Ratio(time, Median(floor))});
  };
  add("find, worst key", worst);
  add("find next, worst key", worstNext);
  add("index for the find", loaded.IndexTime);
}

/// Creates the sort keys of all names once and sorts them.
void BareSort(const LoadedGrid& loaded) {
  const controls::Language& language = loaded.screen.UserLanguage();
  Keys keys(static_cast<std::size_t>(loaded.rows.RecordCount()));
  for (std::size_t row = 0; row < keys.size(); ++row) {
    language.AppendSortKey(loaded.Name(static_cast<std::int64_t>(row)), keys[row]);
  }
  std::vector<std::uint32_t> order(keys.size());
  std::iota(order.begin(), order.end(), 0U);
  std::sort(order.begin(), order.end(),
            [&](std::uint32_t left, std::uint32_t right) { return keys[left] < keys[right]; });
}

void MeasureSort(LoadedGrid& loaded, Table& table) {
  std::vector<double> product;
  std::vector<double> floor;
  for (int round = 0; round < kRounds; ++round) {
    floor.push_back(TimeOf([&] { BareSort(loaded); }));
    loaded.grid.Sort(kNameColumn, SortOrder::None);
    product.push_back(TimeOf([&] { loaded.grid.Sort(kNameColumn, SortOrder::Ascending); }));
  }
  table.Add({"sort by name", std::to_string(loaded.rows.RecordCount()),
             Milliseconds(Median(product)), Milliseconds(Median(floor)),
             Ratio(Median(product), Median(floor))});
}

}  // namespace

void MeasureListWork(const std::vector<std::string>& databases) {
  Table table({"Work on a loaded list", "rows", "product", "floor", "ratio"});
  for (const std::string& path : databases) {
    LoadedGrid loaded(path);
    MeasureFind(loaded, table);
    MeasureSort(loaded, table);
  }
  table.Print();
}

}  // namespace ktrv::benchmarks
