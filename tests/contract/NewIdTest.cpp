#include <iterator>
#include <map>
#include <mutex>
#include <thread>

#include "tests/contract/ContractTest.h"
#include "tests/contract/ServerTest.h"
#include "tests/native/support/WatchedDriver.h"

namespace ktrv::tests {
namespace {

/// Adds a row as the contact editor does, and hands back the id that it reads.
String IdOfNewRow(const database::Environment& environment, StringView connectionString,
                  StringView table, StringView column, String name) {
  database::Recordset row(environment);
  row.Open(u"SELECT * FROM " + String(table) + u" WHERE 1 = 2", connectionString,
           {.Cursor = database::CursorType::Dynamic, .Lock = database::LockType::Optimistic});
  row.AddNew();
  row.SetField(column, std::move(name));
  row.Update();
  row.Resync();
  return ToText(row.Field(u"ID"));
}

TEST_P(ContractTest, EachOfManyWhoAddAtOnceReadsItsOwnRowsId) {
  constexpr std::int64_t kUsers = 6;
  constexpr std::int64_t kRows = 8;
  std::mutex mutex;
  std::map<String, String> names;  // by id
  std::vector<std::thread> users;
  for (std::int64_t user = 0; user < kUsers; ++user) {
    users.emplace_back([&, user] {
      for (std::int64_t row = 0; row < kRows; ++row) {
        const String name = ToDecimal(user) + u"/" + ToDecimal(row);
        try {
          const String id = IdOfNewRow(environment, testDatabase->ConnectionString(), u"CONTACTS",
                                       u"FNAME", name);
          const std::lock_guard lock(mutex);
          names[id] = name;
        } catch (const Error& error) {
          ADD_FAILURE() << ToUtf8(name) << ": " << ToUtf8(error.Description());
        }
      }
    });
  }
  for (std::thread& user : users) user.join();
  EXPECT_EQ(std::ssize(names), kUsers * kRows) << "an id was handed out twice";
  database::Recordset rows = Query(u"SELECT ID, FNAME FROM CONTACTS");
  EXPECT_EQ(rows.RecordCount(), kUsers * kRows);
  for (; !rows.EndOfFile(); rows.MoveNext()) {
    EXPECT_EQ(names[ToText(rows.Field(u"ID"))], ToText(rows.Field(u"FNAME")));
  }
}

TEST_P(ContractTest, NewRowWhoseIdCannotBeReadIsNotStored) {
  WatchedDriver watched(testDatabase->Driver());
  watched.BeforeLastInsertedId = [] {
    throw Error(ErrorNumber::DriverFailure, u"The session is lost", u"Test");
  };
  const database::Environment watchedOnly{[&](StringView) -> database::Driver& { return watched; },
                                          dispatcher.Post()};
  database::Recordset row(watchedOnly);
  row.Open(u"SELECT * FROM CONTACTS WHERE 1 = 2", testDatabase->ConnectionString(),
           {.Lock = database::LockType::Optimistic});
  row.AddNew();
  row.SetField(u"FNAME", String(u"Ann"));
  EXPECT_EQ(FailureOf([&] { row.Update(); }), ErrorNumber::DriverFailure);
  EXPECT_EQ(Query(u"SELECT * FROM CONTACTS").RecordCount(), 0);
  watched.BeforeLastInsertedId = nullptr;
  row.Update();
  EXPECT_EQ(Query(u"SELECT * FROM CONTACTS").RecordCount(), 1);
}

class NewIdTest : public ServerTest {
 protected:
  /// A table whose ids come from elsewhere, so that the engine does not tell them as its own.
  void CreateTableThatTellsNoIds() {
    if (GetParam() == ServerKind::MariaDb) {
      connection.Execute(u"CREATE TABLE N (ID INTEGER PRIMARY KEY, NAME VARCHAR(100))");
      connection.Execute(
          u"CREATE TRIGGER NUMBERED BEFORE INSERT ON N FOR EACH ROW "
          u"SET NEW.ID = (SELECT COALESCE(MAX(ID), 10) + 1 FROM N)");
    } else {
      connection.Execute(u"CREATE SEQUENCE NUMBERS START 11");
      connection.Execute(
          u"CREATE TABLE N (ID INTEGER DEFAULT nextval('NUMBERS') PRIMARY KEY, NAME "
          u"VARCHAR(100))");
    }
  }
};

TEST_P(NewIdTest, OfATableThatTellsNoneIsTheRowsOwn) {
  CreateTableThatTellsNoIds();
  connection.Execute(u"INSERT INTO N (NAME) VALUES ('Ann')");
  EXPECT_EQ(IdOfNewRow(environment, database.ConnectionString(), u"N", u"NAME", u"Ann"), u"12");
  EXPECT_EQ(IdOfNewRow(environment, database.ConnectionString(), u"N", u"NAME", u"ANN"), u"13");
}

TEST_P(NewIdTest, IsTheRowsOwnWhenATriggerAddsElsewhere) {
  connection.Execute(u"CREATE TABLE AUDIT (" + KeyColumn() + u", NOTE VARCHAR(100))");
  connection.Execute(u"INSERT INTO AUDIT (NOTE) VALUES ('a'), ('b'), ('c')");
  if (GetParam() == ServerKind::MariaDb) {
    connection.Execute(
        u"CREATE TRIGGER NOTED AFTER INSERT ON T FOR EACH ROW INSERT INTO AUDIT (NOTE) VALUES "
        u"(NEW.NAME)");
  } else {
    connection.Execute(
        u"CREATE FUNCTION NOTE() RETURNS TRIGGER LANGUAGE plpgsql AS 'BEGIN INSERT INTO AUDIT "
        u"(NOTE) VALUES (NEW.NAME); RETURN NULL; END'");
    connection.Execute(
        u"CREATE TRIGGER NOTED AFTER INSERT ON T FOR EACH ROW EXECUTE FUNCTION NOTE()");
  }
  EXPECT_EQ(IdOfNewRow(environment, database.ConnectionString(), u"T", u"NAME", u"Ann"), u"1");
}

INSTANTIATE_TEST_SUITE_P(, NewIdTest, testing::Values(ServerKind::MariaDb, ServerKind::PostgreSql),
                         NameOfServer);

}  // namespace
}  // namespace ktrv::tests
