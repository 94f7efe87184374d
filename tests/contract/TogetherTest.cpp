#include "common/Error.h"
#include "database/Transaction.h"
#include "database/odbc/Native.h"
#include "tests/contract/ServerTest.h"

#ifndef _WIN32
#include <sql.h>

#include <atomic>
#include <dlfcn.h>
#endif

namespace ktrv::tests {
namespace {

using database::Command;
using Rows = std::vector<std::vector<Variant>>;

/// Statements that run for many rows of values at once.
class TogetherTest : public ServerTest {
 protected:
  TogetherTest() {
    connection.Execute(u"ALTER TABLE T ADD CONSTRAINT ONCE UNIQUE (NAME)");
    connection.Execute(u"ALTER TABLE T ADD NUMBER INTEGER");
    insert.SetActiveConnection(&connection);
    insert.SetCommandText(u"INSERT INTO T (NUMBER, NAME) VALUES (?, ?)");
    insert.Append(u"NUMBER", database::DataType::Integer);
    insert.Append(u"NAME", database::DataType::VarChar, 100);
  }

  /// Rows of these names, numbered.
  static Rows Named(const std::vector<String>& names) {
    Rows rows;
    for (const String& name : names) {
      rows.push_back({static_cast<std::int64_t>(rows.size()), name});
    }
    return rows;
  }
  String Names() {
    database::Recordset rows(environment);
    rows.Open(u"SELECT NUMBER, NAME FROM T ORDER BY ID", connection);
    String names;
    for (; !rows.EndOfFile(); rows.MoveNext()) {
      names += ToText(rows.Field(u"NUMBER")) + u":" + ToText(rows.Field(u"NAME")) + u" ";
    }
    return names;
  }

  Command insert;
};

TEST_P(TogetherTest, TheNextBlockMayBeOfAnotherSize) {
  database::Transaction transaction(connection);
  Rows many;
  for (std::int64_t row = 0; row < 700; ++row) many.push_back({row, u"Name " + ToDecimal(row)});
  EXPECT_EQ(insert.ExecuteTogether(many), Command::Together::Ran);
  EXPECT_EQ(insert.ExecuteTogether(Named({u"Ann", u"A name that is longer than those before"})),
            Command::Together::Ran);
  insert.Execute({std::int64_t{7}, String(u"Bob")});
  transaction.Commit();
  EXPECT_EQ(Count(), u"703");
}

TEST_P(TogetherTest, OneThatIsRefusedLeavesNothingOfItsBlockAndAllBefore) {
  database::Transaction transaction(connection);
  insert.Execute({std::int64_t{7}, String(u"Bob")});
  ASSERT_EQ(insert.ExecuteTogether(Named({u"Ann", u"Cora"})), Command::Together::Ran);
  EXPECT_EQ(insert.ExecuteTogether(Named({u"Dora", u"Bob", u"Ed"})), Command::Together::Undone);
  EXPECT_EQ(Names(), u"7:Bob 0:Ann 1:Cora ");
  insert.Execute({std::int64_t{8}, String(u"Dora")});
  transaction.Commit();
  EXPECT_EQ(Count(), u"4");
}

TEST_P(TogetherTest, TheLastOfABlockMayBeTheOneThatIsRefused) {
  database::Transaction transaction(connection);
  EXPECT_EQ(insert.ExecuteTogether(Named({u"Ann", u"Bob", u"Ann"})), Command::Together::Undone);
  EXPECT_EQ(Names(), u"");
}

#ifndef _WIN32
std::atomic<bool> refusesArrays = false;

TEST_P(TogetherTest, WhatTheDriverDoesNotTakeTogetherIsNotTakenForWritten) {
  database::Transaction transaction(connection);
  refusesArrays = true;
  const auto outcome = insert.ExecuteTogether(Named({u"Ann", u"Bob"}));
  refusesArrays = false;
  EXPECT_EQ(outcome, Command::Together::CannotRun);
  insert.Execute({std::int64_t{7}, String(u"Bob")});
  transaction.Commit();
  EXPECT_EQ(Names(), u"7:Bob ");
}
#endif

TEST_P(TogetherTest, WithoutATransactionNothingRuns) {
  EXPECT_EQ(insert.ExecuteTogether(Named({u"Ann", u"Bob"})), Command::Together::CannotRun);
  EXPECT_EQ(Count(), u"0");
}

TEST_P(TogetherTest, ValuesThatDoNotFitRunOneByOne) {
  database::Transaction transaction(connection);
  EXPECT_EQ(insert.ExecuteTogether(
                {{std::int64_t{1}, String(u"Ann")}, {std::int64_t{2}, String(101, u'x')}}),
            Command::Together::CannotRun);
  EXPECT_EQ(Names(), u"");
}

TEST_P(TogetherTest, NullsFractionsAndDatesRunToo) {
  connection.Execute(u"ALTER TABLE T ADD SIZE DOUBLE PRECISION");
  connection.Execute(u"ALTER TABLE T ADD BORN DATE");
  connection.Execute(u"ALTER TABLE T ADD NEVER DATE");
  insert.SetCommandText(u"INSERT INTO T (NUMBER, NAME, SIZE, BORN, NEVER) VALUES (?, ?, ?, ?, ?)");
  insert.Append(u"SIZE", database::DataType::Double);
  insert.Append(u"BORN", database::DataType::Date);
  insert.Append(u"NEVER", database::DataType::Date);
  const DateTime born = *ParseDateTime(u"1985-05-17");
  database::Transaction transaction(connection);
  EXPECT_EQ(insert.ExecuteTogether({{Null{}, String(u"Ann"), 1.5, Null{}, Null{}},
                                    {std::int64_t{2}, Null{}, Null{}, born, Null{}},
                                    {std::int64_t{3}, String(), 2.25, born, Null{}}}),
            Command::Together::Ran);
  transaction.Commit();
  database::Recordset rows(environment);
  rows.Open(u"SELECT NUMBER, NAME, SIZE, BORN, NEVER FROM T ORDER BY ID", connection);
  String found;
  for (; !rows.EndOfFile(); rows.MoveNext()) {
    for (const auto& column : rows.Columns()) {
      const Variant value = rows.Field(column.Name);
      found += IsNull(value) ? String(u"null ") : ToText(value) + u" ";
    }
  }
  EXPECT_EQ(found, u"null Ann 1.5 null null 2 null null 1985-05-17 null 3  2.25 1985-05-17 null ");
}

TEST_P(TogetherTest, ASessionThatIsLostInBetweenStoresNothing) {
  database::Transaction transaction(connection);
  ASSERT_EQ(insert.ExecuteTogether(Named({u"Ann", u"Bob"})), Command::Together::Ran);
  database.EndSessions();
  EXPECT_THROW(insert.ExecuteTogether(Named({u"Cora", u"Dora"})), Error);
  transaction.RollBack();
  EXPECT_EQ(Count(), u"0");
}

std::vector<ServerKind> ServersOfBlocks() {
  if (!database::odbc::PassesParameterArrays()) return {};
  return {ServerKind::MariaDb, ServerKind::PostgreSql};
}
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(TogetherTest);
INSTANTIATE_TEST_SUITE_P(, TogetherTest, testing::ValuesIn(ServersOfBlocks()), NameOfServer);

/// With every driver manager.
class TogetherOrNotTest : public TogetherTest {};

TEST_P(TogetherOrNotTest, AllAreThereInTheirOrder) {
  database::Transaction transaction(connection);
  const Rows rows = Named({u"Ann", u"Bertil Öst", u"नमस्ते", u"\U0001F600", u""});
  const auto outcome = insert.ExecuteTogether(rows);
  ASSERT_NE(outcome, Command::Together::Undone);
  EXPECT_EQ(outcome == Command::Together::Ran, database::odbc::PassesParameterArrays());
  if (outcome == Command::Together::CannotRun) {
    for (const auto& row : rows) insert.Execute(row);
  }
  transaction.Commit();
  EXPECT_EQ(Names(), u"0:Ann 1:Bertil Öst 2:नमस्ते 3:\U0001F600 4: ");
}

INSTANTIATE_TEST_SUITE_P(, TogetherOrNotTest,
                         testing::Values(ServerKind::MariaDb, ServerKind::PostgreSql),
                         NameOfServer);

}  // namespace
}  // namespace ktrv::tests

#ifndef _WIN32
/// Comes before the driver manager's.
extern "C" SQLRETURN SQL_API SQLSetStmtAttr(SQLHSTMT statement, SQLINTEGER attribute,
                                            SQLPOINTER value, SQLINTEGER length) {
  static const auto next =
      reinterpret_cast<decltype(&SQLSetStmtAttr)>(dlsym(RTLD_NEXT, "SQLSetStmtAttr"));
  if (ktrv::tests::refusesArrays && attribute == SQL_ATTR_PARAMSET_SIZE &&
      reinterpret_cast<std::uintptr_t>(value) > 1) {
    return SQL_ERROR;
  }
  return next(statement, attribute, value, length);
}
#endif
