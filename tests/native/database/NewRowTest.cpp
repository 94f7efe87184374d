#include <gtest/gtest.h>

#include "common/Error.h"
#include "database/Recordset.h"
#include "database/Transaction.h"
#include "database/odbc/OdbcDriver.h"
#include "tests/native/support/FakeDriver.h"
#include "tests/native/support/SqliteFile.h"
#include "tests/native/support/WatchedDriver.h"

namespace ktrv::database {
namespace {

using tests::FakeDriver;

/// What is known of a new row whose Update failed.
class NewRowOutcomeTest : public testing::Test {
 protected:
  NewRowOutcomeTest() {
    driver.Answer(u"SELECT * FROM T", Columns(), {});
    driver.Changes(u"INSERT", 1);
    driver.SetKeyColumns({u"ID"});
    rows.Open(u"SELECT * FROM T WHERE 1 = 2", u"x", {.Lock = LockType::Optimistic});
    rows.AddNew();
    rows.SetField(u"NAME", String(u"Ann"));
  }

  static std::vector<Column> Columns() { return {{u"ID", DataType::Integer}, {u"NAME"}}; }
  static Error Lost() { return Error(ErrorNumber::DriverFailure, u"lost"); }

  void ExpectInDoubt(bool inDoubt) {
    EXPECT_THROW(rows.Update(), Error);
    EXPECT_EQ(rows.IsInDoubt(), inDoubt);
  }

  FakeDriver driver;
  Environment environment{[this](StringView) -> Driver& { return driver; }, [](const auto&) {}};
  Recordset rows{environment};
};

TEST_F(NewRowOutcomeTest, RefusedInsertThatIsUndoneIsInNoDoubt) {
  driver.Fail(u"INSERT", Lost());
  ExpectInDoubt(false);
  EXPECT_EQ(driver.Transactions(), (std::vector<String>{u"begin", u"roll back"}));
}

TEST_F(NewRowOutcomeTest, IdThatIsNotReadUndoesTheRow) {
  driver.FailLastInsertedId(Lost());
  ExpectInDoubt(false);
  EXPECT_EQ(driver.Transactions(), (std::vector<String>{u"begin", u"roll back"}));
}

TEST_F(NewRowOutcomeTest, FailedCommitIsInDoubt) {
  driver.FailCommit(Lost());
  ExpectInDoubt(true);
}

TEST_F(NewRowOutcomeTest, FailedRollBackIsInDoubt) {
  driver.Fail(u"INSERT", Lost());
  driver.FailRollBack(Lost());
  ExpectInDoubt(true);
}

TEST_F(NewRowOutcomeTest, FailureWithoutTransactionsIsInDoubt) {
  driver.HaveNoTransactions();
  driver.FailLastInsertedId(Lost());
  ExpectInDoubt(true);
}

TEST_F(NewRowOutcomeTest, NothingIsInsertedWhenHowIdsAreToldIsNotFoundOut) {
  driver.HaveNoTransactions();
  driver.TellNoIds();
  driver.Fail(u"SELECT * FROM T WHERE NAME", Lost());
  ExpectInDoubt(false);
  for (const auto& each : driver.Executed()) EXPECT_EQ(each.Text.find(u"INSERT"), String::npos);
}

TEST_F(NewRowOutcomeTest, SecondUpdateThatWorksIsInNoDoubt) {
  driver.FailCommit(Lost());
  ExpectInDoubt(true);
  driver.FailCommit(std::nullopt);
  rows.Update();
  EXPECT_FALSE(rows.IsInDoubt());
}

/// Looking for a row of which nobody knows whether it was stored.
class FindAddedTest : public testing::Test {
 protected:
  FindAddedTest() {
    connection.Open(file.ConnectionString());
    connection.Execute(u"CREATE TABLE T (ID INTEGER PRIMARY KEY, NAME TEXT, AGE REAL, BORN DATE)");
  }

  Recordset Empty() {
    Recordset rows(environment);
    rows.Open(u"SELECT * FROM T WHERE 1 = 2", connection, {.Lock = LockType::Optimistic});
    return rows;
  }
  static NewRow Ann() {
    return {{{u"NAME", String(u"Ann")},
             {u"AGE", 41.0},
             {u"BORN", Variant(*ParseDateTime(u"1980-05-01"))}},
            {}};
  }
  String Found(const NewRow& row) {
    Recordset rows = Empty();
    return rows.FindAdded(row) ? ToText(rows.Field(u"ID")) : String(u"none");
  }

  tests::SqliteFile file;
  OdbcDriver odbc;
  tests::WatchedDriver driver{odbc};
  Environment environment{[this](StringView) -> Driver& { return driver; }, [](const auto&) {}};
  Connection connection{environment};
};

TEST_F(FindAddedTest, FindsTheRowThatUpdateStored) {
  Recordset rows = Empty();
  rows.AddNew();
  for (const auto& [name, value] : Ann().Values) rows.SetField(name, value);
  rows.Update();
  EXPECT_EQ(Found(rows.AddedRow()), ToText(rows.Field(u"ID")));
}

TEST_F(FindAddedTest, FindsNothingThatDiffers) {
  connection.Execute(
      u"INSERT INTO T VALUES (1, 'ANN', 41, '1980-05-01'), "
      u"(2, 'Ann', 42, '1980-05-01'), (3, 'Ann', 41, NULL)");
  EXPECT_EQ(Found(Ann()), u"none");
}

TEST_F(FindAddedTest, LeavesOutRowsThatWereThereBefore) {
  connection.Execute(u"INSERT INTO T VALUES (1, 'Ann', 41, '1980-05-01')");
  NewRow ann = Ann();
  ann.SameBefore = std::vector<String>{u"1"};
  EXPECT_EQ(Found(ann), u"none");
  connection.Execute(
      u"INSERT INTO T VALUES (9, 'Ann', 41, '1980-05-01'), "
      u"(10, 'Ann', 41, '1980-05-01')");
  EXPECT_EQ(Found(ann), u"10") << "the newest of several";
}

TEST_F(FindAddedTest, FindsOnlyTheRowWithTheKeyThatItGot) {
  Recordset rows = Empty();
  rows.AddNew();
  for (const auto& [name, value] : Ann().Values) rows.SetField(name, value);
  rows.Update();
  connection.Execute(u"INSERT INTO T VALUES (9, 'Ann', 41, '1980-05-01')");
  EXPECT_EQ(Found(rows.AddedRow()), u"1");
  connection.Execute(u"DELETE FROM T WHERE ID = 1");
  EXPECT_EQ(Found(rows.AddedRow()), u"none");
  connection.Execute(u"INSERT INTO T VALUES (1, 'Bob', 41, '1980-05-01')");
  EXPECT_EQ(Found(rows.AddedRow()), u"none") << "the key was given to another row";
}

TEST_F(FindAddedTest, NullIsFoundAsNull) {
  connection.Execute(u"INSERT INTO T VALUES (1, '', 41, NULL), (2, NULL, 41, NULL)");
  EXPECT_EQ(Found({{{u"NAME", Null{}}, {u"AGE", 41.0}}, {}}), u"2");
}

TEST_F(FindAddedTest, RowThatIsFoundCanBeChanged) {
  connection.Execute(u"INSERT INTO T VALUES (7, 'Ann', 41, '1980-05-01')");
  Recordset rows = Empty();
  ASSERT_TRUE(rows.FindAdded(Ann()));
  rows.SetField(u"NAME", String(u"Bob"));
  rows.Update();
  Recordset after(environment);
  after.Open(u"SELECT * FROM T", connection);
  EXPECT_EQ(after.RecordCount(), 1);
  EXPECT_EQ(ToText(after.Field(u"NAME")), u"Bob");
}

TEST_F(FindAddedTest, RowStoredByACommitWhoseAnswerWasLostIsFound) {
  Recordset rows = Empty();
  rows.AddNew();
  for (const auto& [name, value] : Ann().Values) rows.SetField(name, value);
  driver.AfterCommit = [] { throw Error(ErrorNumber::DriverFailure, u"lost"); };
  EXPECT_THROW(rows.Update(), Error);
  ASSERT_TRUE(rows.IsInDoubt());
  EXPECT_EQ(Found(rows.AddedRow()), u"1");
}

TEST_F(FindAddedTest, RowAddedWithinATransactionGoesWithIt) {
  {
    Transaction transaction(connection);
    Recordset rows = Empty();
    rows.AddNew();
    for (const auto& [name, value] : Ann().Values) rows.SetField(name, value);
    rows.Update();
    EXPECT_TRUE(transaction.RollBack());
  }
  EXPECT_EQ(Found(Ann()), u"none");
}

}  // namespace
}  // namespace ktrv::database
