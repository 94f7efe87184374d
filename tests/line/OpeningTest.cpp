#include <gtest/gtest.h>
#include <thread>

#include "common/Error.h"
#include "tests/native/support/DatabaseServer.h"
#include "tests/native/support/Line.h"

namespace ktrv::tests {
namespace {

using Clock = std::chrono::steady_clock;

class OpeningTest : public testing::TestWithParam<ServerKind> {};

TEST_P(OpeningTest, OneThatHangsDoesNotHoldUpOthers) {
  ServerDatabase database(GetParam());
  Line line(PortOf(GetParam()));
  line.FailAfter(0, Line::Fault::Silent);
  std::thread hanging([&] {
    EXPECT_THROW(database.Driver().Open(line.Through(database.ConnectionString()), u"", u""),
                 Error);
  });
  while (line.Connections() == 0) std::this_thread::yield();
  const auto began = Clock::now();
  EXPECT_TRUE(database.Driver().Open(database.ConnectionString(), u"", u""));
  EXPECT_LT(Clock::now() - began, std::chrono::seconds(5));
  line.Mend();
  hanging.join();
}

INSTANTIATE_TEST_SUITE_P(, OpeningTest,
                         testing::Values(ServerKind::MariaDb, ServerKind::PostgreSql),
                         [](const auto& each) {
                           return each.param == ServerKind::MariaDb ? "MariaDb" : "PostgreSql";
                         });

}  // namespace
}  // namespace ktrv::tests
