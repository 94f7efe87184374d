#include "benchmarks/ImportWork.h"

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "benchmarks/ImportFloor.h"
#include "benchmarks/Table.h"
#include "benchmarks/Target.h"
#include "benchmarks/UserInterfaceLoop.h"
#include "data/ToolQueries.h"
#include "database/odbc/OdbcDriver.h"
#include "tool/Export.h"
#include "tool/Query.h"
#include "tool/import/Import.h"

namespace ktrv::benchmarks {
namespace {

constexpr int kRounds = 5;

/// An address book without a window, for the commands of the console program.
class ToolBook {
 public:
  explicit ToolBook(const std::string& database) { connection_.Open(ConnectionStringOf(database)); }

  database::Connection& Connection() { return connection_; }
  tool::Book& Opened() { return book_; }
  tool::Console& Console() { return console_; }
  std::int64_t Contacts() {
    return tool::CountOf(connection_, u"SELECT COUNT(*) FROM SMS_ABCONTACTS");
  }

 private:
  database::OdbcDriver driver_;
  database::Connection connection_{
      {[this](StringView) -> database::Driver& { return driver_; }, [](const auto&) {}}};
  tool::Book book_{connection_, data::Dialect::Sql};
  std::istringstream in_;
  std::ostringstream out_;
  tool::Console console_{out_, out_, in_};
};

/// The cells of all contacts in the order of the import's statement.
std::vector<ContactCells> ReadContacts(ToolBook& book) {
  std::vector<ContactCells> contacts;
  tool::Query query(book.Connection(), data::ToolQueries::kContacts);
  while (query.Next()) {
    ContactCells cells{String(u"0")};
    constexpr std::size_t kHobby = 21;
    constexpr std::size_t kAge = 17;
    const auto add = [&](std::size_t column) {
      const auto cell = query.Cell(column);
      cells.push_back(cell ? std::optional<String>(*cell) : std::nullopt);
    };
    for (std::size_t column = 2; column < kAge; ++column) add(column);
    add(kHobby);
    for (std::size_t column = kAge; column < kHobby; ++column) add(column);
    contacts.push_back(std::move(cells));
  }
  return contacts;
}

double ImportBy(ToolBook& book, const std::string& file, tool::Duplicates duplicates) {
  tool::ImportOptions options;
  options.File = file;
  options.OfDuplicates = duplicates;
  const auto start = Clock::now();
  if (tool::Import(options, book.Opened(), book.Console()) != tool::ExitCode::Done) {
    throw std::runtime_error("the import refused contacts");
  }
  return SecondsSince(start);
}

}  // namespace

void MeasureImport(const std::string& database) {
  ToolBook book(database);
  const std::filesystem::path file = std::filesystem::temp_directory_path() / "import-bench.csv";
  tool::ExportOptions exporting;
  exporting.Output = file.string();
  tool::Export(exporting, book.Opened(), book.Console());
  const std::vector<ContactCells> contacts = ReadContacts(book);
  const auto empty = [&] { book.Connection().Execute(u"DELETE FROM SMS_ABCONTACTS"); };

  std::vector<double> products;
  std::vector<double> floors;
  for (int round = 0; round < kRounds; ++round) {
    empty();
    floors.push_back(InsertByBareOdbc(BareConnectionStringOf(database), contacts));
    if (book.Contacts() != static_cast<std::int64_t>(contacts.size())) {
      throw std::runtime_error("the bare loop did not insert all contacts");
    }
    empty();
    products.push_back(ImportBy(book, file.string(), tool::Duplicates::Skip));
  }
  const double again = ImportBy(book, file.string(), tool::Duplicates::Skip);
  std::filesystem::remove(file);
  std::sort(products.begin(), products.end());
  std::sort(floors.begin(), floors.end());
  const double product = products[kRounds / 2];
  const double floor = floors[kRounds / 2];

  Table table({"Import", "database", "contacts", "product", "floor", "ratio"});
  const std::string rows = std::to_string(contacts.size());
  table.Add({"new contacts", NameOf(database), rows, Milliseconds(product), Milliseconds(floor),
             Ratio(product, floor)});
  table.Add({"all there already", NameOf(database), rows, Milliseconds(again), Milliseconds(floor),
             Ratio(again, floor)});
  table.Print();
}

}  // namespace ktrv::benchmarks
