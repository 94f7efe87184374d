#include "database/Engines.h"

#include <gtest/gtest.h>

#include "database/Command.h"
#include "tests/native/support/FakeDriver.h"

namespace ktrv::database {
namespace {

TEST(EnginesTest, AnEngineIsKnownByItsProductsName) {
  EXPECT_EQ(EngineOf(u"SQLite"), Engine::Sqlite);
  EXPECT_EQ(EngineOf(u"MySQL"), Engine::MySql);
  EXPECT_EQ(EngineOf(u"MariaDB"), Engine::MySql);
  EXPECT_EQ(EngineOf(u"PostgreSQL"), Engine::PostgreSql);
  EXPECT_EQ(EngineOf(u"Oracle"), Engine::Oracle);
  EXPECT_EQ(EngineOf(u"A Maker's SQL Server"), Engine::SqlServer);
}

TEST(EnginesTest, NoOtherProductIsTakenForOne) {
  EXPECT_EQ(EngineOf(u"Some Other SQL"), Engine::Other);
  EXPECT_EQ(EngineOf(u""), Engine::Other);
}

TEST(EnginesTest, NoTransactionIsMarkedInTheWordsOfAnotherEngine) {
  for (const Engine engine : {Engine::MySql, Engine::PostgreSql, Engine::Oracle, Engine::Sqlite}) {
    EXPECT_EQ(MarkStatement(engine), u"SAVEPOINT KTRV_MARK");
    EXPECT_EQ(UndoToMarkStatement(engine), u"ROLLBACK TO SAVEPOINT KTRV_MARK");
  }
  EXPECT_EQ(MarkStatement(Engine::SqlServer), u"SAVE TRANSACTION KTRV_MARK");
  EXPECT_EQ(UndoToMarkStatement(Engine::SqlServer), u"ROLLBACK TRANSACTION KTRV_MARK");
  EXPECT_EQ(MarkStatement(Engine::Other), u"");
}

TEST(EnginesTest, ACountOfZeroIsNoneOnSqlServer) {
  tests::FakeDriver driver;
  driver.Changes(u"UPDATE", 0);
  driver.Changes(u"DELETE", 2);
  const database::Environment surroundings{[&](StringView) -> Driver& { return driver; },
                                           [](const auto&) {}};
  for (const Engine engine : {Engine::PostgreSql, Engine::SqlServer}) {
    driver.Kind = engine;
    Connection connection(surroundings);
    connection.Open(u"");
    Command command;
    command.SetActiveConnection(&connection);
    command.SetCommandText(u"UPDATE T SET A = 1");
    command.Execute({});
    EXPECT_EQ(command.RecordsAffected(), engine == Engine::SqlServer ? -1 : 0);
    command.SetCommandText(u"DELETE FROM T");
    command.Execute({});
    EXPECT_EQ(command.RecordsAffected(), 2);
  }
}

}  // namespace
}  // namespace ktrv::database
