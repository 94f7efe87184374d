#include <windows.h>

#include "database/ado/AdoDriver.h"
#include "tests/contract/ContractTest.h"
#include "tests/contract/MariaDbDatabase.h"
#include "tests/contract/PostgreSqlDatabase.h"
#include "tests/contract/SqliteDatabase.h"

namespace ktrv::tests {
namespace {

/// A database of the suite, reached by an OLE DB string instead of its ODBC one.
template <class Database>
class ByAdo final : public TestDatabase {
 public:
  String ConnectionString() const override {
    return u"Provider=MSDASQL;" + database_.ConnectionString();
  }
  database::Driver& Driver() override { return driver_; }

  StringView KeyColumn() const override { return database_.KeyColumn(); }
  StringView NumberType() const override { return database_.NumberType(); }
  StringView FractionType() const override { return database_.FractionType(); }
  StringView TextType() const override { return database_.TextType(); }
  StringView LongTextType() const override { return database_.LongTextType(); }
  StringView DateType() const override { return database_.DateType(); }
  StringView EndlessQuery() const override { return database_.EndlessQuery(); }
  bool CanBeCancelled() const override { return database_.CanBeCancelled(); }
  void EndSessions() override { database_.EndSessions(); }

 private:
  Database database_;
  database::AdoDriver driver_;
};

template <class Database>
std::unique_ptr<TestDatabase> Make() {
  return std::make_unique<ByAdo<Database>>();
}

}  // namespace

std::vector<TestEngine> Engines() {
  return {{"SqliteByAdo", Make<SqliteDatabase>},
          {"MariaDbByAdo", Make<MariaDbDatabase>},
          {"PostgreSqlByAdo", Make<PostgreSqlDatabase>}};
}

INSTANTIATE_TEST_SUITE_P(, ContractTest, testing::ValuesIn(Engines()),
                         [](const auto& each) { return each.param.Name; });

TEST_P(ContractTest, RunsOverTheServerOfTheTests) {
  EXPECT_NE(GetModuleHandleW(L"adoserver.dll"), nullptr);
}

}  // namespace ktrv::tests
