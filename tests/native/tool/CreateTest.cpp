#include <gmock/gmock.h>

#include "tests/native/support/SqliteFile.h"
#include "tests/native/tool/ToolFixture.h"
#include "tool/Schema.h"

namespace ktrv::tests {
namespace {

using testing::HasSubstr;

using CreateTest = ToolFixture;
using CreateOnDatabaseTest = ToolFixture;

TEST_F(CreateTest, MakesAFileWithAllTables) {
  const SqliteFile place;
  const std::string connect = ToUtf8(place.ConnectionString()) + ".new";
  ASSERT_EQ(RunBare({"--connect", connect, "create", "--host-tables"}), 0) << Messages.str();
  EXPECT_EQ(RunBare({"--connect", connect, "list"}), 0) << Messages.str();
  EXPECT_EQ(RunBare({"--connect", connect, "folders"}), 0) << Messages.str();
  std::filesystem::remove(place.File().string() + ".new");
}

TEST_F(CreateOnDatabaseTest, RefusesTablesThatAreThere) {
  EXPECT_EQ(Run({"create"}), 1);
  EXPECT_THAT(Messages.str(), HasSubstr("SMS_ABFOLDERS is already there"));
}

TEST_F(CreateOnDatabaseTest, MakesWhatIsMissing) {
  database::Connection connection(Database.Surroundings());
  connection.Open(Database.ConnectionString());
  for (const StringView table :
       {u"SMS_ABFOLDERS", u"SMS_ABCONTACTS", u"SMS_ABGROUPS", u"SMS_ABGROUPMAPS"}) {
    connection.Execute(u"DROP TABLE " + String(table));
  }
  connection.Close();
  ASSERT_EQ(Run({"create"}), 0) << Messages.str();
  EXPECT_EQ(Run({"list"}), 0) << Messages.str();
}

TEST_F(CreateOnDatabaseTest, TellsHowToGoOnAfterItFailedHalfWay) {
  const char* engine = std::getenv("KTRV_TEST_ENGINE");
  if (engine && std::string_view(engine) == "postgresql") return;  // has no such view
  Database.Run({u"DROP TABLE SMS_ABFOLDERS", u"DROP TABLE SMS_ABCONTACTS",
                u"DROP TABLE SMS_ABGROUPS", u"DROP TABLE SMS_ABGROUPMAPS",
                u"CREATE TABLE HIDDEN (ID INTEGER)",
                u"CREATE VIEW SMS_ABGROUPS AS SELECT * FROM HIDDEN", u"DROP TABLE HIDDEN"});
  EXPECT_EQ(Run({"create"}), 1);
  const bool isHalf = engine != nullptr;  // SQLite undoes it
  EXPECT_EQ(Messages.str().find("check --repair") != std::string::npos, isHalf) << Messages.str();
}

TEST(SchemaTest, HasAStatementForEachTableOnEachEngine) {
  using database::Engine;
  for (const Engine engine :
       {Engine::Sqlite, Engine::MySql, Engine::PostgreSql, Engine::SqlServer, Engine::Oracle}) {
    std::size_t tables = 0;
    for (const String& statement : tool::SchemaStatements(engine)) {
      EXPECT_EQ(statement.find(u';'), String::npos);
      EXPECT_EQ(statement.find(u"--"), String::npos);
      if (statement.find(u"CREATE TABLE") != String::npos) ++tables;
    }
    EXPECT_EQ(tables, 4U);
  }
}

}  // namespace
}  // namespace ktrv::tests
