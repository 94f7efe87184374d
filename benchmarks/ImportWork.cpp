#include "benchmarks/ImportWork.h"

#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "benchmarks/ImportFloor.h"
#include "benchmarks/Runs.h"
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

  const auto import = [&] { return ImportBy(book, file.string(), tool::Duplicates::Skip); };
  Runs products;
  Runs floors;
  for (int round = 0; round < kRounds; ++round) {
    empty();
    floors.Add([&] { return InsertByBareOdbc(BareConnectionStringOf(database), contacts); });
    if (book.Contacts() != static_cast<std::int64_t>(contacts.size())) {
      throw std::runtime_error("the bare loop did not insert all contacts");
    }
    empty();
    products.Add(import);
  }
  Runs again;
  again.Add(import);
  std::filesystem::remove(file);

  Table table({"Import", "database", "contacts", "product", "floor", "ratio"});
  const std::string rows = std::to_string(contacts.size());
  const auto add = [&](const std::string& what, double product, double floor) {
    table.Add({what, NameOf(database), rows, Milliseconds(product), Milliseconds(floor),
               Ratio(product, floor)});
  };
  add("new contacts", products.Elapsed(), floors.Elapsed());
  add("  processor time here", products.Processor(), floors.Processor());
  add("all there already", again.Elapsed(), floors.Elapsed());
  add("  processor time here", again.Processor(), floors.Processor());
  table.Print();
}

}  // namespace ktrv::benchmarks
