#include "benchmarks/LineWork.h"

#include <functional>
#include <stdexcept>
#include <vector>

#include "benchmarks/Table.h"
#include "benchmarks/Target.h"
#include "benchmarks/UserInterfaceLoop.h"
#include "database/odbc/ConnectionString.h"
#include "tests/line/Host.h"
#include "tests/native/support/Line.h"

namespace ktrv::benchmarks {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kLengths[] = {milliseconds(0), milliseconds(20), milliseconds(100)};

struct Task {
  const char* Name;
  int Aim;  ///< turns
  std::function<void(tests::Host&)> Before;
  std::function<void(tests::Host&)> Run;
  std::function<void(tests::Host&)> After;
};

const auto kNothing = [](tests::Host&) {};

std::vector<Task> Tasks() {
  using tests::Host;
  return {
      {"open a contact", 2, kNothing, [](Host& host) { host.OpenContact(); }, kNothing},
      {"save it", 5, kNothing, [](Host& host) { host.SaveContact(); }, kNothing},
      {"open the address book", 10, kNothing, [](Host& host) { host.OpenAddressBook([] {}); },
       kNothing},
      {"choose a node", 4, kNothing, [](Host& host) { host.ChooseNode(u"SFLD1", 100); },
       [](Host& host) { host.CloseAddressBook(); }},
      {"open a group", 8, kNothing, [](Host& host) { host.OpenGroup(); },
       [](Host& host) { host.CloseGroup(); }},
      {"expand 100 groups", 202, [](Host& host) { host.OpenPicker(); },
       [](Host& host) { host.Expand(); }, kNothing},
      {"save a group of 10,000", 110, [](Host& host) { host.OpenNewGroup(); },
       [number = 0](Host& host) mutable { host.SaveGroup(u"Big " + ToDecimal(++number)); },
       kNothing},
  };
}

}  // namespace

void MeasureLineWork(const std::string& connection) {
  const String direct = ConnectionStringOf(connection);
  const auto port = ParseInteger(database::odbc::KeywordValue(direct, u"Port"));
  if (!port) throw std::runtime_error("the connection string names no port");
  database::OdbcDriver odbc;
  database::Connection filling(
      {[&](StringView) -> database::Driver& { return odbc; }, [](const auto&) {}});
  filling.Open(direct);
  for (const StringView table :
       {u"SMS_ABGROUPMAPS", u"SMS_ABGROUPS", u"SMS_ABCONTACTS", u"SMS_ABFOLDERS", u"SMS_USERS"}) {
    filling.Execute(u"DELETE FROM " + String(table));
  }
  tests::FillBook(filling);
  filling.Close();

  tests::Line line(static_cast<std::uint16_t>(*port));
  tests::Host host(line.Through(direct));
  std::vector<Task> tasks = Tasks();
  std::vector<std::vector<std::string>> rows;
  rows.reserve(tasks.size());
  for (const Task& task : tasks)
    rows.push_back({task.Name, NameOf(connection), std::to_string(task.Aim)});
  bool isFirst = true;
  // The first round is not printed, because it opens the connections.
  for (const milliseconds length : {milliseconds(0), kLengths[0], kLengths[1], kLengths[2]}) {
    line.SetDelay(length);
    for (std::size_t each = 0; each < tasks.size(); ++each) {
      tasks[each].Before(host);
      const int before = line.Turns();
      const auto start = Clock::now();
      tasks[each].Run(host);
      const double seconds = SecondsSince(start);
      const int turns = line.Turns() - before;
      tasks[each].After(host);
      if (isFirst) continue;
      if (rows[each].size() == 3) rows[each].push_back(std::to_string(turns));
      rows[each].push_back(Milliseconds(seconds));
    }
    isFirst = false;
  }
  Table table({"At the end of a line", "database", "aim", "turns", "0 ms", "20 ms", "100 ms"});
  for (auto& row : rows) table.Add(std::move(row));
  table.Print();
}

}  // namespace ktrv::benchmarks
