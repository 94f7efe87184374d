#include "benchmarks/ToolWork.h"

#include <cstdio>
#include <filesystem>
#include <functional>
#include <sstream>
#include <stdexcept>

#include "benchmarks/ExportFloor.h"
#include "benchmarks/OdbcFloor.h"
#include "benchmarks/Runs.h"
#include "benchmarks/Table.h"
#include "benchmarks/Target.h"
#include "data/ToolQueries.h"
#include "database/odbc/OdbcDriver.h"
#include "tool/Check.h"
#include "tool/Export.h"

namespace ktrv::benchmarks {
namespace {

constexpr int kRounds = 5;

/// Runs both alternately and adds their medians to the table.
void Compare(Table& table, const char* what, const std::string& database,
             const std::function<void()>& product, const std::function<void()>& floor) {
  Runs products;
  Runs floors;
  for (int round = 0; round < kRounds; ++round) {
    floors.Add(floor);
    products.Add(product);
  }
  table.Add({what, NameOf(database), Milliseconds(products.Elapsed()),
             Milliseconds(floors.Elapsed()), Ratio(products.Elapsed(), floors.Elapsed()),
             Ratio(products.Processor(), floors.Processor())});
}

/// Runs a command as the program does. \return its exit code
int Run(const std::string& database, const tool::Command& command) {
  database::OdbcDriver driver;
  database::Connection connection(
      {[&](StringView) -> database::Driver& { return driver; }, [](const auto&) {}});
  connection.Open(ConnectionStringOf(database));
  tool::Book book{connection, data::Dialect::Sql};
  std::ostringstream out;
  std::ostringstream messages;
  std::istringstream in;
  tool::Console console{out, messages, in};
  return command(book, console);
}

void MeasureExport(const std::string& database, Table& table) {
  const auto file = std::filesystem::temp_directory_path() / "addressbook-benchmark.csv";
  const auto product = [&] {
    tool::ExportOptions options;
    options.Output = file.string();
    Run(database, [&](tool::Book& book, tool::Console& console) {
      return tool::Export(options, book, console);
    });
  };
  const std::string query = ToUtf8(data::ToolQueries::kContacts);
  const auto floor = [&] {
    ExportByBareOdbc(BareConnectionStringOf(database), query, file.string());
  };
  Compare(table, "export all", database, product, floor);
  std::filesystem::remove(file);
}

void MeasureCheck(const std::string& database, Table& table) {
  const auto product = [&] {
    const int code = Run(database, [](tool::Book& book, tool::Console& console) {
      return tool::Check({}, book, console);
    });
    if (code == tool::ExitCode::Usage) throw std::runtime_error("the check did not run");
  };
  const std::string query = ToUtf8(data::ToolQueries::kNumbers);
  const auto floor = [&] { FetchByBareOdbc(BareConnectionStringOf(database), query); };
  Compare(table, "check", database, product, floor);
}

}  // namespace

void MeasureToolWork(const std::vector<std::string>& databases) {
  Table table({"Console program", "database", "product", "floor", "ratio", "of processor time"});
  for (const std::string& database : databases) {
    MeasureExport(database, table);
    MeasureCheck(database, table);
  }
  table.Print();
  std::puts(
      "The floor of an export fetches UTF-8 and writes it unconverted: the least for SQLite.\n");
}

}  // namespace ktrv::benchmarks
