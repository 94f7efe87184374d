#include "tests/contract/ContractTest.h"
#include "tests/contract/MariaDbDatabase.h"
#include "tests/contract/PostgreSqlDatabase.h"
#include "tests/contract/SqliteDatabase.h"

namespace ktrv::tests {
namespace {

template <class Database>
std::unique_ptr<TestDatabase> Make() {
  return std::make_unique<Database>();
}

}  // namespace

std::vector<TestEngine> Engines() {
  return {{"SqliteByOdbc", Make<SqliteDatabase>},
          {"MariaDbByOdbc", Make<MariaDbDatabase>},
          {"PostgreSqlByOdbc", Make<PostgreSqlDatabase>}};
}

INSTANTIATE_TEST_SUITE_P(, ContractTest, testing::ValuesIn(Engines()),
                         [](const auto& each) { return each.param.Name; });

}  // namespace ktrv::tests
