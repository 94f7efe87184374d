#include <gtest/gtest.h>

#include "database/Command.h"
#include "database/Transaction.h"
#include "tests/native/support/SqliteFile.h"
#include "tests/native/support/TestDispatcher.h"

namespace ktrv::tests {
namespace {

using database::Command;
using Rows = std::vector<std::vector<Variant>>;

/// Statements that run for many rows of values at once: there several rows by one statement.
class TogetherOnSqliteTest : public testing::Test {
 protected:
  TogetherOnSqliteTest() {
    connection.Open(file.ConnectionString());
    connection.Execute(
        u"CREATE TABLE T (ID INTEGER PRIMARY KEY AUTOINCREMENT, NAME TEXT UNIQUE, SIZE REAL, "
        u"BORN DATE)");
    insert.SetActiveConnection(&connection);
    insert.SetCommandText(u"INSERT INTO T (NAME, SIZE, BORN) VALUES (?, ?, ?)");
    insert.Append(u"NAME", database::DataType::VarWChar, 100);
    insert.Append(u"SIZE", database::DataType::Double);
    insert.Append(u"BORN", database::DataType::Date);
  }

  /// Rows with names from the first number on.
  static Rows Numbered(std::int64_t first, std::int64_t count) {
    Rows rows;
    for (std::int64_t row = first; row < first + count; ++row) {
      rows.push_back({u"Name \u00D6 " + ToDecimal(row), Null{}, Null{}});
    }
    return rows;
  }
  String Value(StringView query) {
    database::Recordset rows(environment);
    rows.Open(query, connection);
    return ToText(rows.Field(rows.Columns().at(0).Name));
  }

  SqliteFile file;
  TestDispatcher dispatcher;
  database::Environment environment = file.Surroundings(dispatcher.Post());
  database::Connection connection{environment};
  Command insert;
};

TEST_F(TogetherOnSqliteTest, AllAreThereInTheirOrder) {
  database::Transaction transaction(connection);
  for (const std::int64_t count : {1, 332, 333, 334, 1000}) {
    insert.ExecuteTogether(Numbered(count * 10000, count));
  }
  transaction.Commit();
  EXPECT_EQ(Value(u"SELECT COUNT(*) AS N FROM T"), u"2000");
  EXPECT_EQ(Value(u"SELECT COUNT(*) AS N FROM T A, T B WHERE B.ID = A.ID + 1 AND "
                  u"CAST(SUBSTR(B.NAME, 8) AS INTEGER) <= CAST(SUBSTR(A.NAME, 8) AS INTEGER)"),
            u"0");
  EXPECT_EQ(Value(u"SELECT NAME FROM T WHERE ID = 2000"), u"Name \u00D6 10000999");
}

TEST_F(TogetherOnSqliteTest, ValuesAreStoredAsByThemselves) {
  const std::vector<Variant> row = {String(u"\U0001F600"), 2.25, *ParseDateTime(u"1985-05-17")};
  insert.Execute(row);
  Rows rows(400, row);
  for (std::size_t at = 0; at < rows.size(); ++at) rows[at][0] = ToDecimal(std::int64_t(at));
  rows[7] = {Null{}, Null{}, Null{}};
  database::Transaction transaction(connection);
  ASSERT_EQ(insert.ExecuteTogether(rows), Command::Together::Ran);
  transaction.Commit();
  const StringView like =
      u"SELECT COUNT(*) AS N FROM T A, T B WHERE A.ID = 1 AND B.SIZE = A.SIZE AND "
      u"TYPEOF(B.NAME) = TYPEOF(A.NAME) AND TYPEOF(B.BORN) = TYPEOF(A.BORN) AND B.BORN = A.BORN";
  EXPECT_EQ(Value(like), u"400");
  EXPECT_EQ(Value(u"SELECT COUNT(*) AS N FROM T WHERE NAME IS NULL AND SIZE IS NULL AND "
                  u"BORN IS NULL"),
            u"1");
}

TEST_F(TogetherOnSqliteTest, OneThatIsRefusedLeavesNothingOfItsBlockAndAllBefore) {
  database::Transaction transaction(connection);
  ASSERT_EQ(insert.ExecuteTogether(Numbered(0, 5)), Command::Together::Ran);
  Rows rows = Numbered(100, 1000);
  rows[500][0] = String(u"Name \u00D6 2");
  EXPECT_EQ(insert.ExecuteTogether(rows), Command::Together::Undone);
  insert.Execute(Numbered(9, 1)[0]);
  ASSERT_EQ(insert.ExecuteTogether(Numbered(1000, 400)), Command::Together::Ran);
  transaction.Commit();
  EXPECT_EQ(Value(u"SELECT COUNT(*) AS N FROM T"), u"406");
}

TEST_F(TogetherOnSqliteTest, OtherStatementsCannotRunTogether) {
  insert.Execute(Numbered(1, 1)[0]);
  Command remove;
  remove.SetActiveConnection(&connection);
  remove.SetCommandText(u"DELETE FROM T WHERE ID = ?");
  remove.Append(u"ID", database::DataType::Integer);
  database::Transaction transaction(connection);
  EXPECT_EQ(remove.ExecuteTogether({{std::int64_t{1}}, {std::int64_t{2}}}),
            Command::Together::CannotRun);
  transaction.Commit();
  EXPECT_EQ(Value(u"SELECT COUNT(*) AS N FROM T"), u"1");
}

}  // namespace
}  // namespace ktrv::tests
