#include "tests/contract/ContractTest.h"
#include "tests/contract/SqliteDatabase.h"

namespace ktrv::tests {

std::vector<TestEngine> Engines() {
  return {{"SqliteByOdbc",
           [] { return std::unique_ptr<TestDatabase>(std::make_unique<SqliteDatabase>()); }}};
}

INSTANTIATE_TEST_SUITE_P(, ContractTest, testing::ValuesIn(Engines()),
                         [](const auto& each) { return each.param.Name; });

}  // namespace ktrv::tests
