#include <thread>

#include "common/Error.h"
#include "tests/contract/ServerTest.h"

namespace ktrv::tests {
namespace {

/// What happens to those who were connected when a server is restarted, or another takes over,
/// between two of their statements.
class LostSessionTest : public ServerTest {
 protected:
  LostSessionTest() {
    insert.SetActiveConnection(&connection);
    insert.SetCommandText(u"INSERT INTO T (NAME) VALUES (?)");
    insert.Append(u"NAME", database::DataType::VarWChar, 100);
    insert.Execute({String(u"Ann")});
  }

  /// Ends the session and lets the user think.
  void Lose() {
    database.EndSessions();
    const auto later = std::chrono::steady_clock::now() + std::chrono::milliseconds(150);
    ASSERT_TRUE(dispatcher.RunUntil([&] { return std::chrono::steady_clock::now() > later; }));
  }

  database::Command insert;
};

TEST_P(LostSessionTest, ACommandIsPreparedOnANewOne) {
  Lose();
  insert.Execute({String(u"Bob")});
  EXPECT_EQ(Count(), u"2");
  EXPECT_EQ(connection.State(), database::ObjectState::Open);
}

TEST_P(LostSessionTest, AQueryRunsOnANewOne) {
  Lose();
  database::Recordset rows(environment);
  rows.Open(u"SELECT NAME FROM T", connection);
  EXPECT_EQ(ToText(rows.Field(u"NAME")), u"Ann");
}

TEST_P(LostSessionTest, ATextRunsOnANewOneOnce) {
  Lose();
  EXPECT_EQ(connection.Execute(u"INSERT INTO T (NAME) VALUES ('Bob')"), 1);
  EXPECT_EQ(Count(), u"2");
}

TEST_P(LostSessionTest, AllThatFollowsGoesToTheSameNewOne) {
  Lose();
  for (int number = 0; number < 20; ++number) insert.Execute({ToDecimal(number)});
  EXPECT_EQ(Count(), u"21");
}

TEST_P(LostSessionTest, AStatementThatWasBrokenOffFailsAndTheNextOneWorks) {
  const String slow =
      GetParam() == ServerKind::MariaDb ? u"SELECT SLEEP(60)" : u"SELECT PG_SLEEP(60)";
  std::thread ending([&] {
    while (!database.IsRunning(slow)) std::this_thread::sleep_for(std::chrono::milliseconds(5));
    database.EndSessions();
  });
  EXPECT_THROW(connection.Execute(slow), Error);
  ending.join();
  EXPECT_EQ(connection.Execute(u"INSERT INTO T (NAME) VALUES ('Bob')"), 1);
  EXPECT_EQ(Count(), u"2");
}

INSTANTIATE_TEST_SUITE_P(, LostSessionTest,
                         testing::Values(ServerKind::MariaDb, ServerKind::PostgreSql),
                         NameOfServer);

}  // namespace
}  // namespace ktrv::tests
