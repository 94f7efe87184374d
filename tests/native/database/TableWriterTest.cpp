#include "database/TableWriter.h"

#include <gtest/gtest.h>

#include "common/Error.h"
#include "tests/native/support/FakeDriver.h"

namespace ktrv::database {
namespace {

class TableWriterTest : public testing::Test {
 protected:
  bool Accepts(StringView query) {
    try {
      const TableWriter writer(*link, query, columns);
      return true;
    } catch (const Error& error) {
      EXPECT_EQ(error.Number(), ErrorNumber::NotUpdatable);
      return false;
    }
  }

  /// The number with which a new name for row 5 fails; 0 when it does not.
  std::int32_t FailureOfUpdate() {
    TableWriter::Cells cells = {u"5", u"Ann", std::nullopt};
    try {
      TableWriter(*link, u"SELECT * FROM T", columns).Update(cells, {{1, String(u"Bob")}});
    } catch (const Error& error) {
      EXPECT_EQ(cells[1], u"Ann");
      return error.Number();
    }
    EXPECT_EQ(cells[1], u"Bob");
    return 0;
  }

  void Insert(TableWriter::Cells& cells, const TableWriter::Values& values) {
    TableWriter table(*link, u"SELECT * FROM T WHERE 1 = 2", columns);
    table.Insert(cells, values, table.FindKeySource(values));
  }

  tests::FakeDriver driver;
  std::unique_ptr<Link> link = driver.Open(u"", u"", u"");
  std::vector<Column> columns = {
      {u"Id", DataType::Integer}, {u"FNAME"}, {u"AGE", DataType::Double}};
};

TEST_F(TableWriterTest, OnlyAQueryOfOneTableIsUpdatable) {
  EXPECT_TRUE(Accepts(u"SELECT * FROM T"));
  EXPECT_TRUE(Accepts(u"select ID, FNAME from dbo.T where 1 = 2"));
  EXPECT_TRUE(Accepts(u"SELECT * FROM [a table] ORDER BY ID"));
  EXPECT_FALSE(Accepts(u"SELECT * FROM T, U"));
  EXPECT_FALSE(Accepts(u"SELECT * FROM T JOIN U ON 1 = 1"));
  EXPECT_FALSE(Accepts(u"SELECT ID FROM T WHERE 1 = 1 UNION SELECT ID FROM U"));
  EXPECT_FALSE(Accepts(u"SELECT DISTINCT FNAME FROM T"));
  EXPECT_FALSE(Accepts(u"SELECT * FROM (SELECT 1)"));
  EXPECT_FALSE(Accepts(u"UPDATE T SET A = 1"));
  EXPECT_FALSE(Accepts(u"SELECT 1"));
  EXPECT_FALSE(Accepts(u""));
}

TEST_F(TableWriterTest, ResultWithoutTheKeyIsNotUpdatable) {
  driver.SetKeyColumns({u"CODE"});
  EXPECT_FALSE(Accepts(u"SELECT * FROM T"));
}

TEST_F(TableWriterTest, UpdateNamesTheKeyAndTheOldValuesOfWhatChanges) {
  driver.Changes(u"UPDATE", 1);
  TableWriter::Cells cells = {u"5", u"Ann", std::nullopt};
  TableWriter(*link, u"SELECT * FROM T WHERE ID = 5", columns)
      .Update(cells, {{1, String(u"Bob")}, {2, 41.5}});
  const auto ran = driver.Executed().back();
  EXPECT_EQ(ToUtf8(ran.Text),
            "UPDATE T SET FNAME = ?, AGE = ? WHERE Id = ? AND FNAME = ? AND AGE IS NULL");
  EXPECT_EQ(ran.Values,
            (std::vector<Variant>{String(u"Bob"), 41.5, std::int64_t{5}, String(u"Ann")}));
  EXPECT_EQ(cells, (TableWriter::Cells{u"5", u"Bob", u"41.5"}));
}

TEST_F(TableWriterTest, UpdateWritesOnlyWhatChangesAndComparesAllThatWasSet) {
  driver.Changes(u"UPDATE", 1);
  TableWriter::Cells cells = {u"5", u"Ann", u"41.5"};
  TableWriter(*link, u"SELECT * FROM T WHERE ID = 5", columns)
      .Update(cells, {{1, String(u"Bob")}, {2, 41.5}});
  EXPECT_EQ(ToUtf8(driver.Executed().back().Text),
            "UPDATE T SET FNAME = ? WHERE Id = ? AND FNAME = ? AND AGE = ?");
}

TEST_F(TableWriterTest, UnlimitedTextIsNotComparedWhereTheEngineRejectsIt) {
  driver.Changes(u"UPDATE", 1);
  columns[1].Size = 1;
  columns.push_back({u"NOTE", DataType::VarWChar, 0});
  const auto condition = [&](Engine engine) {
    driver.Kind = engine;
    TableWriter::Cells cells = {u"5", u"A", std::nullopt, u"old"};
    TableWriter(*link, u"SELECT * FROM T", columns)
        .Update(cells, {{1, String(u"B")}, {3, String(u"new")}});
    const String text = driver.Executed().back().Text;
    return ToUtf8(text.substr(text.find(u"WHERE")));
  };
  EXPECT_EQ(condition(Engine::SqlServer), "WHERE Id = ? AND FNAME = ?");
  EXPECT_EQ(condition(Engine::Oracle), "WHERE Id = ? AND FNAME = ?");
  EXPECT_EQ(condition(Engine::PostgreSql), "WHERE Id = ? AND FNAME = ? AND NOTE = ?");
}

TEST_F(TableWriterTest, UpdateThatChangesNothingLooksWhetherTheRowIsAsItWasRead) {
  driver.Answer(u"SELECT", columns, {{u"5", u"Ann", std::nullopt}});
  TableWriter::Cells cells = {u"5", u"Ann", std::nullopt};
  TableWriter(*link, u"SELECT * FROM T WHERE ID = 5", columns)
      .Update(cells, {{1, cells[1].value()}});
  EXPECT_EQ(ToUtf8(driver.Executed().back().Text), "SELECT * FROM T WHERE Id = ? AND FNAME = ?");
}

TEST_F(TableWriterTest, UpdateOfARowThatHasOtherValuesIsAConflict) {
  driver.Changes(u"UPDATE", 0);
  driver.Answer(u"SELECT", columns, {{u"5", u"Eve", std::nullopt}});
  EXPECT_EQ(FailureOfUpdate(), ErrorNumber::RowChanged);
  // Somebody else wrote the same; what the count says is what holds.
  driver.Answer(u"SELECT", columns, {{u"5", u"Bob", std::nullopt}});
  EXPECT_EQ(FailureOfUpdate(), ErrorNumber::RowChanged);
}

TEST_F(TableWriterTest, CountOfZeroSaysNothingOnSqlServer) {
  driver.Kind = Engine::SqlServer;
  driver.Changes(u"UPDATE", 0);
  driver.Answer(u"SELECT", columns, {{u"5", u"Bob", std::nullopt}});
  EXPECT_EQ(FailureOfUpdate(), 0);
  driver.Answer(u"SELECT", columns, {{u"5", u"Eve", std::nullopt}});
  EXPECT_EQ(FailureOfUpdate(), ErrorNumber::RowChanged);
}

TEST_F(TableWriterTest, UpdateOfARowThatIsGoneIsNotFound) {
  driver.Changes(u"UPDATE", 0);
  driver.Answer(u"SELECT", columns, {});
  EXPECT_EQ(FailureOfUpdate(), ErrorNumber::RowGone);
}

TEST_F(TableWriterTest, UpdateThatIsNotCountedIsNotTakenForWritten) {
  driver.Changes(u"UPDATE", -1);
  driver.Answer(u"SELECT", columns, {{u"5", u"Eve", std::nullopt}});
  driver.Answer(u"WHERE Id = ? AND FNAME = ?", columns, {});
  EXPECT_EQ(FailureOfUpdate(), ErrorNumber::RowChanged);
  driver.Answer(u"SELECT", columns, {});
  EXPECT_EQ(FailureOfUpdate(), ErrorNumber::RowGone);
}

TEST_F(TableWriterTest, UpdateThatIsNotCountedIsReadAndCompared) {
  driver.Changes(u"UPDATE", -1);
  driver.Answer(u"SELECT", columns, {{u"5", u"Bob", std::nullopt}});
  EXPECT_EQ(FailureOfUpdate(), 0);
  EXPECT_EQ(ToUtf8(driver.Executed().back().Text), "SELECT * FROM T WHERE Id = ? AND FNAME = ?");
  EXPECT_EQ(driver.Executed().back().Values,
            (std::vector<Variant>{std::int64_t{5}, String(u"Bob")}));
}

TEST_F(TableWriterTest, RowWithOtherLettersDoesNotHoldWhatWasWritten) {
  driver.Changes(u"UPDATE", -1);
  driver.Answer(u"SELECT", columns, {{u"5", u"BOB", std::nullopt}});
  EXPECT_EQ(FailureOfUpdate(), ErrorNumber::RowChanged);
}

TEST_F(TableWriterTest, InsertNamesOnlyWhatWasSetAndLearnsTheId) {
  driver.Changes(u"INSERT", 1);
  driver.SetLastInsertedId(77);
  TableWriter::Cells cells(3);
  Insert(cells, {{2, Null{}}});
  EXPECT_EQ(ToUtf8(driver.Executed().back().Text), "INSERT INTO T (AGE) VALUES (?)");
  EXPECT_EQ(cells[0], u"77");
}

TEST_F(TableWriterTest, KeyColumnThatIsNamedTwiceCountsOnce) {
  driver.SetKeyColumns({u"ID", u"id"});
  driver.Changes(u"INSERT", 1);
  driver.SetLastInsertedId(77);
  TableWriter::Cells cells(3);
  Insert(cells, {{2, Null{}}});
  EXPECT_EQ(cells[0], u"77");
}

}  // namespace
}  // namespace ktrv::database
