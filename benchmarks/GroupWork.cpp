#include "benchmarks/GroupWork.h"

#include <algorithm>
#include <ctime>
#include <functional>
#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

#include "benchmarks/GroupDialog.h"
#include "benchmarks/GroupFloor.h"
#include "benchmarks/OdbcFloor.h"
#include "benchmarks/Table.h"
#include "benchmarks/UserInterfaceLoop.h"
#include "data/GroupQueries.h"
#include "database/DialectRewriter.h"
#include "database/odbc/ConnectionString.h"

namespace ktrv::benchmarks {
namespace {

constexpr int kRounds = 5;

/// A folder, and another one with twice as many rows.
struct Pair {
  const char* Rows;
  const char16_t* Once;
  const char16_t* Twice;
};

/// CPU seconds of this process.
double WorkOf(const std::function<void()>& work) {
  const std::clock_t start = std::clock();
  work();
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

void Require(bool truth) {
  if (!truth) throw std::runtime_error("the group dialog did not do its work");
}

/// Measures a task alternately on a folder and on one of twice the size.
void Measure(const char* name, const Pair& pair, const std::function<double(const String&)>& work,
             Table& table) {
  double once = std::numeric_limits<double>::max();
  double twice = once;
  for (int round = 0; round < kRounds; ++round) {
    once = std::min(once, work(pair.Once));
    twice = std::min(twice, work(pair.Twice));
  }
  table.Add({name, pair.Rows, Milliseconds(once), Milliseconds(twice), Ratio(twice, once)});
}

/// Opens a picker whose left list shows the folder.
void OpenPicker(GroupDialog& dialog, const String& folder, bool expandGroups = false) {
  dialog.OpenPicker(expandGroups);
  dialog.LoadSource(folder);
}

double SelectAll(const std::string& path, const String& folder) {
  GroupDialog dialog(path);
  OpenPicker(dialog, folder);
  const double seconds = WorkOf([&] { dialog.Form().SelectAllMembers(); });
  Require(dialog.Form().Members().Count() == dialog.Form().vsfFolderContacts.Rows() - 1);
  return seconds;
}

double SelectAllAgain(const std::string& path, const String& folder) {
  GroupDialog dialog(path);
  OpenPicker(dialog, folder);
  dialog.Form().SelectAllMembers();
  const int members = dialog.Form().Members().Count();
  const double seconds = WorkOf([&] { dialog.Form().SelectAllMembers(); });
  Require(dialog.Form().Members().Count() == members);
  return seconds;
}

double Pick(const std::string& path, const String& folder, int membersPerRow) {
  GroupDialog dialog(path);
  OpenPicker(dialog, folder, membersPerRow > 1);
  dialog.Form().SelectAllMembers();
  const double seconds = WorkOf([&] { Require(dialog.Form().Save_Data()); });
  Require(dialog.Form().Picked().value().Selected->Count() ==
          dialog.Form().Members().Count() * membersPerRow);
  return seconds;
}

void MeasureGrowth(const std::string& path, Table& table) {
  for (const Pair& pair : {Pair{"10000", u"101", u"102"}, Pair{"100000", u"103", u"104"}}) {
    Measure(
        "select all", pair, [&](const String& folder) { return SelectAll(path, folder); }, table);
    Measure(
        "select all, all there already", pair,
        [&](const String& folder) { return SelectAllAgain(path, folder); }, table);
    Measure(
        "pick", pair, [&](const String& folder) { return Pick(path, folder, 1); }, table);
  }
  for (const Pair& pair :
       {Pair{"100 groups of 100", u"201", u"202"}, Pair{"1000 groups of 100", u"203", u"204"}}) {
    Measure(
        "expand", pair, [&](const String& folder) { return Pick(path, folder, 100); }, table);
  }
}

std::string FloorConnection(const std::string& path) {
  return ToUtf8(database::odbc::CompleteConnectionString(
      u"Driver=SQLite3;Database=" + FromUtf8(path), {}, {}));
}

struct Compared {
  double Product;
  double Floor;
};

/// The round with the median ratio; product and minimum are measured alternately.
Compared Typical(std::vector<Compared> rounds) {
  std::sort(rounds.begin(), rounds.end(), [](const Compared& left, const Compared& right) {
    return left.Product * right.Floor < right.Product * left.Floor;
  });
  return rounds[rounds.size() / 2];
}

void Add(const char* what, std::int64_t rows, const std::vector<Compared>& rounds, Table& table) {
  const Compared typical = Typical(rounds);
  table.Add({what, std::to_string(rows), Milliseconds(typical.Product), Milliseconds(typical.Floor),
             Ratio(typical.Product, typical.Floor)});
}

void MeasureSave(const std::string& path, Table& table) {
  constexpr std::int32_t kGroup = 1001;
  const String name = u"Ten thousand";
  std::vector<Compared> rounds;
  std::int64_t members = 0;
  for (int round = 0; round < kRounds; ++round) {
    GroupDialog dialog(path);
    forms::frmGroupsNew& form = dialog.OpenGroup(ToDecimal(kGroup), name);
    const auto ids = dialog.MemberIds();
    members = static_cast<std::int64_t>(ids.size());
    const double floor = SaveByBareOdbc(FloorConnection(path), kGroup, name, ids);
    const auto start = Clock::now();
    Require(form.Save_Data());
    rounds.push_back({SecondsSince(start), floor});
  }
  Add("save a group", members, rounds, table);
}

void MeasureSource(const std::string& path, const String& folder, Table& table) {
  const String query = data::GroupQueries::SharedCandidates(
      data::Dialect::Sql, data::GroupQueries::Purpose::PickRecipients, folder);
  const std::string text = ToUtf8(database::RewriteForEngine(query, database::Engine::Sqlite));
  GroupDialog dialog(path);
  dialog.OpenPicker();
  std::vector<Compared> rounds;
  std::int64_t rows = 0;
  for (int round = 0; round < 2 * kRounds; ++round) {
    const auto start = Clock::now();
    rows = FetchByBareOdbc(FloorConnection(path), text).Rows;
    const double floor = SecondsSince(start);
    rounds.push_back({dialog.LoadSource(folder), floor});
    Require(dialog.Form().vsfFolderContacts.Rows() - 1 == rows);
    dialog.LoadSource(u"0");
  }
  Add("load the source list", rows, rounds, table);
}

}  // namespace

void MeasureGroupWork(const std::string& path) {
  Table growth({"Group dialog", "rows", "time", "twice the rows", "growth"});
  MeasureGrowth(path, growth);
  growth.Print();
  Table floors({"Group dialog", "rows", "product", "floor", "ratio"});
  MeasureSave(path, floors);
  for (const char16_t* folder : {u"101", u"103"}) MeasureSource(path, folder, floors);
  floors.Print();
}

}  // namespace ktrv::benchmarks
