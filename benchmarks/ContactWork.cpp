#include "benchmarks/ContactWork.h"

#include <functional>
#include <stdexcept>

#include "benchmarks/ContactFloor.h"
#include "benchmarks/Table.h"
#include "benchmarks/Target.h"
#include "benchmarks/UserInterfaceLoop.h"
#include "database/KeepingDriver.h"
#include "database/odbc/OdbcDriver.h"
#include "forms/contact/frmNewContact.h"
#include "tests/native/support/FakeOperatingSystem.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::benchmarks {
namespace {

constexpr int kRounds = 101;
constexpr int kContact = 1000;

/// Times of one task, measured alternately for the product and the minimum work.
class Comparison {
 public:
  void Product(const std::function<void()>& work) { Measure(work, product_); }
  void Floor(const std::function<void()>& work) { Measure(work, floor_); }

  /// The sum of both times for each round.
  Comparison With(const Comparison& other) const {
    Comparison sum;
    for (std::size_t round = 0; round < product_.size(); ++round) {
      sum.product_.push_back(product_[round] + other.product_[round]);
      sum.floor_.push_back(floor_[round] + other.floor_[round]);
    }
    return sum;
  }
  void AddTo(Table& table, const char* what, const std::string& database) const {
    const double product = Median(product_);
    const double floor = Median(floor_);
    table.Add({what, NameOf(database), Milliseconds(product), Milliseconds(floor),
               Ratio(product, floor)});
  }

 private:
  static void Measure(const std::function<void()>& work, std::vector<double>& times) {
    const auto start = Clock::now();
    work();
    times.push_back(SecondsSince(start));
  }

  std::vector<double> product_;
  std::vector<double> floor_;
};

/// A user who edits the contact, on a screen without output.
class Editor {
 public:
  explicit Editor(const String& connectionString) {
    services_.LogFilePath = u"log";
    database_.ConnectionString = connectionString;
  }
  ~Editor() { driver_.CloseKept(); }

  void Open() {
    form_ = std::make_unique<forms::frmNewContact>(
        Workplace{services_, database_.Another(), {}},
        forms::ContactRequest{.Mode = ModeOfOperation::Modify,
                              .EditContactId = ToDecimal(kContact)});
    form_->Load();
  }
  void Save() { form_->cmdSave.UserClicks(); }
  forms::frmNewContact& Form() { return *form_; }

  void RequireSaved() {
    if (form_->IsLoaded() || !system_.TextOf(services_.LogFilePath).empty()) {
      throw std::runtime_error("the contact was not saved");
    }
  }

 private:
  database::OdbcDriver odbc_;
  database::KeepingDriver driver_{odbc_};
  tests::ScriptedScreen screen_;
  tests::FakeOperatingSystem system_;
  Services services_{screen_, system_};
  BookDatabase database_{
      {[this](StringView) -> database::Driver& { return driver_; }, screen_.Dispatcher.Post()}};
  std::unique_ptr<forms::frmNewContact> form_;
};

void MeasureEditing(const std::string& path, Table& table) {
  const std::string bare = BareConnectionStringOf(path);
  Editor editor(ConnectionStringOf(path));
  Comparison opening;
  Comparison saving;
  for (int round = 0; round < kRounds; ++round) {
    opening.Floor([&] { OpenByBareOdbc(bare, kContact); });
    opening.Product([&] { editor.Open(); });
    // Each save changes the city.
    const std::string number = std::to_string(round);
    saving.Floor([&] { SaveByBareOdbc(bare, kContact, "Town " + number); });
    editor.Form().txtCity.SetText(u"City " + FromUtf8(number));
    saving.Product([&] { editor.Save(); });
    editor.RequireSaved();
  }
  opening.AddTo(table, "open a contact", path);
  saving.AddTo(table, "save it", path);
  opening.With(saving).AddTo(table, "open and save", path);
}

}  // namespace

void MeasureContactWork(const std::vector<std::string>& databases) {
  Table table({"Contact editor", "database", "product", "floor", "ratio"});
  for (const std::string& path : databases) MeasureEditing(path, table);
  table.Print();
}

}  // namespace ktrv::benchmarks
