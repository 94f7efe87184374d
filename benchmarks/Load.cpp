#include "benchmarks/Load.h"

#include <algorithm>
#include <stdexcept>
#include <thread>

#include "benchmarks/Memory.h"
#include "benchmarks/OdbcFloor.h"
#include "benchmarks/Table.h"
#include "benchmarks/Target.h"
#include "benchmarks/UserInterfaceLoop.h"
#include "data/AddressBookQueries.h"
#include "database/BackgroundFetch.h"
#include "database/DialectRewriter.h"
#include "database/Recordset.h"
#include "database/odbc/OdbcDriver.h"

namespace ktrv::benchmarks {
namespace {

using database::Recordset;

constexpr int kRounds = 5;

/// A list in a window without output.
class List {
 public:
  explicit List(const std::string& database) : connectionString_(ConnectionStringOf(database)) {}

  void Open(StringView query) {
    start_ = Clock::now();
    firstRow_ = 0;
    complete_ = false;
    rows_ = Recordset(environment_);
    rows_.Location = database::CursorLocation::Client;
    rows_.FetchProgress = [this](std::int64_t, std::int64_t) {
      if (firstRow_ == 0) firstRow_ = SecondsSince(start_);
    };
    rows_.FetchComplete = [this](const Error* error, database::EventStatus) {
      if (error) throw std::runtime_error(error->what());
      complete_ = true;
    };
    rows_.Open(query, connectionString_,
               {.Cursor = database::CursorType::Keyset,
                .Lock = database::LockType::Optimistic,
                .Async = true});
    rows_.Disconnect();
  }

  double FinishLoading() {
    loop_.RunUntil([&] { return complete_; });
    return SecondsSince(start_);
  }

  double WaitForFirstRow() {
    loop_.RunUntil([&] { return firstRow_ > 0 || complete_; });
    return firstRow_;
  }

  double LongestClosure() const { return loop_.LongestClosure(); }
  std::int64_t Count() const { return rows_.RecordCount(); }

  double TextBytes() const {
    std::size_t units = 0;
    for (std::int64_t row = 0; row < rows_.RecordCount(); ++row) {
      for (std::size_t column = 0; column < rows_.Columns().size(); ++column) {
        units += rows_.CellText(row, column).value_or(StringView()).size();
      }
    }
    return static_cast<double>(units * sizeof(char16_t));
  }

 private:
  String connectionString_;
  database::OdbcDriver driver_;
  UserInterfaceLoop loop_;
  database::Environment environment_{[this](StringView) -> database::Driver& { return driver_; },
                                     loop_.Post()};
  Recordset rows_{environment_};
  Clock::time_point start_;
  double firstRow_ = 0;
  bool complete_ = false;
};

void WaitForFetches() {
  while (database::BackgroundFetch::Running() > 0) std::this_thread::yield();
}

String Query() {
  return data::AddressBookQueries::RootItems(data::Dialect::Sql);
}

FloorResult Floor(const std::string& path) {
  return FetchByBareOdbc(BareConnectionStringOf(path),
                         ToUtf8(database::RewriteForEngine(Query(), EngineOfDatabase(path))));
}

void MeasureTime(const std::string& path, Table& table) {
  std::vector<double> product;
  std::vector<double> productFirst;
  std::vector<double> floor;
  std::vector<double> floorFirst;
  double longestClosure = 0;
  std::int64_t count = 0;
  for (int round = 0; round < kRounds; ++round) {
    const auto start = Clock::now();
    const FloorResult bare = Floor(path);
    floor.push_back(SecondsSince(start));
    floorFirst.push_back(bare.FirstRow);
    List list(path);
    list.Open(Query());
    productFirst.push_back(list.WaitForFirstRow());
    product.push_back(list.FinishLoading());
    count = list.Count();
    if (count != bare.Rows) throw std::runtime_error("product and floor read different rows");
    longestClosure = std::max(longestClosure, list.LongestClosure());
    WaitForFetches();
  }
  const std::string rows = std::to_string(count);
  const auto add = [&](const char* what, double ours, double bare) {
    table.Add({what, rows, Milliseconds(ours), Milliseconds(bare), Ratio(ours, bare)});
  };
  add("load the list", Median(product), Median(floor));
  add("first rows shown", Median(productFirst), Median(floorFirst));
  table.Add({"longest closure on the UI thread", rows, Milliseconds(longestClosure), "-", "-"});
}

void MeasureMemory(const std::string& path, Table& table) {
  const auto bare = InOwnProcess([&] {
    const Memory before = MemoryInUse();
    Floor(path);
    const Memory after = MemoryInUse();
    return std::vector{after.Peak - before.Now, after.Now - before.Now};
  });
  const auto ours = InOwnProcess([&] {
    const Memory before = MemoryInUse();
    List list(path);
    list.Open(Query());
    list.FinishLoading();
    WaitForFetches();
    const Memory after = MemoryInUse();
    return std::vector{after.Peak - before.Now, after.Now - before.Now, list.TextBytes(),
                       static_cast<double>(list.Count())};
  });
  const double text = ours[2];
  const std::string rows = std::to_string(static_cast<std::int64_t>(ours[3]));
  const auto add = [&](const char* what, double bytes) {
    table.Add({what, rows, Mebibytes(bytes), Mebibytes(text), Ratio(bytes, text)});
  };
  add("peak, all of it", ours[0]);
  add("peak of bare ODBC, which keeps no row", bare[0]);
  add("peak without bare ODBC's", ours[0] - bare[0]);
  add("after loading", ours[1]);
  add("after bare ODBC", bare[1]);
}

void MeasureSwitch(const std::string& path, Table& table) {
  std::vector<double> early;
  std::vector<double> late;
  std::vector<double> call;
  for (int round = 0; round < kRounds; ++round) {
    for (const bool whileSorting : {true, false}) {
      List list(path);
      list.Open(Query());
      if (whileSorting) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
      } else {
        list.WaitForFirstRow();
      }
      const auto start = Clock::now();
      list.Open(data::AddressBookQueries::GroupItems(data::Dialect::Sql, u"1"));
      call.push_back(SecondsSince(start));
      (whileSorting ? early : late).push_back(list.FinishLoading());
      WaitForFetches();
    }
  }
  const auto add = [&](const char* what, const std::vector<double>& times) {
    table.Add({what, Milliseconds(Median(times)),
               Milliseconds(*std::max_element(times.begin(), times.end()))});
  };
  add("switch while the engine sorts", early);
  add("switch while rows come", late);
  add("of that, on the UI thread", call);
}

}  // namespace

void MeasureLoad(const std::vector<std::string>& databases) {
  Table time({"Time", "rows", "product", "floor", "ratio"});
  Table memory({"Memory above start", "rows", "product", "text held", "ratio"});
  Table change({"Switch to a small list", "median", "worst"});
  // Memory first, in separate processes, before any thread is started.
  for (const std::string& path : databases) MeasureMemory(path, memory);
  for (const std::string& path : databases) MeasureTime(path, time);
  MeasureSwitch(databases.back(), change);
  time.Print();
  memory.Print();
  change.Print();
}

}  // namespace ktrv::benchmarks
