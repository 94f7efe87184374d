#include "database/Command.h"
#include "database/Transaction.h"
#include "tests/contract/ContractTest.h"

namespace ktrv::tests {
namespace {

using database::Recordset;

TEST_P(ContractTest, NewRowIsWrittenAndItsIdReadBack) {
  Insert(String(u"Before"));
  Recordset rows = Editable(u"SELECT * FROM CONTACTS WHERE 1 = 2");
  rows.AddNew();
  rows.SetField(u"FName", String(u"Ann"));
  rows.SetField(u"Age", 41.5);
  rows.SetField(u"Birthday", *ParseDateTime(u"1980-05-01"));
  rows.Update();
  rows.Resync();
  EXPECT_EQ(ToText(rows.Field(u"Id")), u"2");
  EXPECT_EQ(rows.RecordCount(), 1);
  EXPECT_EQ(Value(u"SELECT AGE FROM CONTACTS WHERE ID = 2"), Variant(41.5));
}

TEST_P(ContractTest, NewRowLeavesTheOtherColumnsNull) {
  Recordset rows = Editable(u"SELECT * FROM CONTACTS WHERE 1 = 2");
  rows.AddNew();
  rows.SetField(u"FNAME", String());
  EXPECT_TRUE(IsNull(rows.Field(u"NOTE")));
  rows.Update();
  EXPECT_EQ(Value(u"SELECT FNAME FROM CONTACTS"), Variant(String()));
  EXPECT_EQ(Value(u"SELECT AGE FROM CONTACTS"), Variant(Null{}));
}

TEST_P(ContractTest, CancelledNewRowIsNotWritten) {
  Recordset rows = Editable(u"SELECT * FROM CONTACTS WHERE 1 = 2");
  rows.AddNew();
  rows.SetField(u"FNAME", String(u"x"));
  rows.CancelUpdate();
  rows.Update();
  EXPECT_TRUE(rows.EndOfFile());
  EXPECT_EQ(Query(u"SELECT * FROM CONTACTS").RecordCount(), 0);
}

TEST_P(ContractTest, ChangedFieldsAreWritten) {
  Insert(String(u"Ann"), String(u"old"), 0.1 + 0.2, *ParseDateTime(u"1980-05-01"), std::int64_t{3});
  Recordset rows = Editable(u"SELECT * FROM CONTACTS WHERE ID = 1");
  rows.SetField(u"FNAME", String(u"नाम"));
  rows.SetField(u"NOTE", Null{});
  rows.SetField(u"AGE", 7.0);
  rows.SetField(u"BIRTHDAY", *ParseDateTime(u"1981-06-02"));
  rows.SetField(u"FOLDER_ID", std::int64_t{4});
  rows.Update();
  Recordset again = Query(u"SELECT * FROM CONTACTS");
  EXPECT_EQ(again.Field(u"FNAME"), Variant(String(u"नाम")));
  EXPECT_EQ(again.Field(u"NOTE"), Variant(Null{}));
  EXPECT_EQ(again.Field(u"AGE"), Variant(7.0));
  EXPECT_EQ(again.Field(u"BIRTHDAY"), Variant(*ParseDateTime(u"1981-06-02")));
  EXPECT_EQ(again.Field(u"FOLDER_ID"), Variant(std::int64_t{4}));
}

TEST_P(ContractTest, AKeyThatIsNotCalledIdKeepsNoRowFromBeingWritten) {
  connection.Execute(u"CREATE TABLE K (CODE INTEGER PRIMARY KEY, NAME VARCHAR(100))");
  connection.Execute(u"INSERT INTO K (CODE, NAME) VALUES (4, 'Ann')");
  Recordset rows = Editable(u"SELECT * FROM K WHERE CODE = 4");
  rows.SetField(u"NAME", String(u"Bob"));
  rows.Update();
  EXPECT_EQ(Value(u"SELECT NAME FROM K"), Variant(String(u"Bob")));
}

TEST_P(ContractTest, WrittenFieldsCanBeReadAndChangedAgain) {
  Insert(String(u"Ann"));
  Recordset rows = Editable(u"SELECT * FROM CONTACTS WHERE ID = 1");
  rows.SetField(u"FNAME", String(u"Bob"));
  EXPECT_EQ(ToText(rows.Field(u"FNAME")), u"Bob");
  rows.Update();
  EXPECT_EQ(ToText(rows.Field(u"FNAME")), u"Bob");
  rows.SetField(u"FNAME", String(u"Cid"));
  rows.Update();
  EXPECT_EQ(Value(u"SELECT FNAME FROM CONTACTS"), Variant(String(u"Cid")));
}

TEST_P(ContractTest, FieldThatSomebodyElseChangedIsNotOverwritten) {
  Insert(String(u"Ann"));
  Recordset rows = Editable(u"SELECT * FROM CONTACTS WHERE ID = 1");
  database::Connection other(environment);
  other.Open(testDatabase->ConnectionString());
  other.Execute(u"UPDATE CONTACTS SET FNAME = 'Theirs'");
  rows.SetField(u"FNAME", String(u"Mine"));
  EXPECT_EQ(FailureOf([&] { rows.Update(); }), ErrorNumber::RowChanged);
  EXPECT_EQ(ToText(rows.Field(u"FNAME")), u"Mine") << "the pending value stays";
  EXPECT_EQ(Value(u"SELECT FNAME FROM CONTACTS"), Variant(String(u"Theirs")));
}

TEST_P(ContractTest, ChangeOfAnotherFieldByAnotherIsNoConflict) {
  Insert(String(u"Ann"));
  Recordset rows = Editable(u"SELECT * FROM CONTACTS WHERE ID = 1");
  database::Connection other(environment);
  other.Open(testDatabase->ConnectionString());
  other.Execute(u"UPDATE CONTACTS SET NOTE = 'Theirs'");
  rows.SetField(u"FNAME", String(u"Mine"));
  rows.Update();
  EXPECT_EQ(Value(u"SELECT NOTE FROM CONTACTS"), Variant(String(u"Theirs")));
  EXPECT_EQ(Value(u"SELECT FNAME FROM CONTACTS"), Variant(String(u"Mine")));
}

TEST_P(ContractTest, FieldSetToWhatItWasCollidesWithSomebodyElsesChange) {
  Insert(String(u"Ann"));
  Recordset rows = Editable(u"SELECT * FROM CONTACTS WHERE ID = 1");
  database::Connection other(environment);
  other.Open(testDatabase->ConnectionString());
  other.Execute(u"UPDATE CONTACTS SET FNAME = 'Theirs'");
  rows.SetField(u"FNAME", String(u"Ann"));
  EXPECT_EQ(FailureOf([&] { rows.Update(); }), ErrorNumber::RowChanged);
  EXPECT_EQ(Value(u"SELECT FNAME FROM CONTACTS"), Variant(String(u"Theirs")));
}

TEST_P(ContractTest, RowThatStaysTheSameIsUpdated) {
  Insert(String(u"Ann"));
  Recordset rows = Editable(u"SELECT * FROM CONTACTS WHERE ID = 1");
  rows.SetField(u"FNAME", String(u"Ann"));
  rows.Update();
  EXPECT_EQ(Value(u"SELECT FNAME FROM CONTACTS"), Variant(String(u"Ann")));
}

TEST_P(ContractTest, RowThatIsGoneCannotBeChangedOrReadAgain) {
  Insert(String(u"Ann"));
  Recordset rows = Editable(u"SELECT * FROM CONTACTS WHERE ID = 1");
  connection.Execute(u"DELETE FROM CONTACTS");
  EXPECT_EQ(FailureOf([&] { rows.Resync(); }), ErrorNumber::RowGone);
  rows.SetField(u"FNAME", String(u"Mine"));
  EXPECT_EQ(FailureOf([&] { rows.Update(); }), ErrorNumber::RowGone);
}

TEST_P(ContractTest, ResyncShowsWhatOthersWrote) {
  Insert(String(u"Ann"));
  Recordset rows = Editable(u"SELECT * FROM CONTACTS WHERE ID = 1");
  connection.Execute(u"UPDATE CONTACTS SET FNAME = 'Theirs', NOTE = 'n'");
  rows.Resync();
  EXPECT_EQ(ToText(rows.Field(u"FNAME")), u"Theirs");
  EXPECT_EQ(ToText(rows.Field(u"NOTE")), u"n");
}

TEST_P(ContractTest, ReadOnlyRecordsetIsNotUpdatable) {
  Insert(String(u"Ann"));
  Recordset rows = Query(u"SELECT * FROM CONTACTS");
  EXPECT_EQ(FailureOf([&] { rows.AddNew(); }), ErrorNumber::NotUpdatable);
  EXPECT_EQ(FailureOf([&] { rows.SetField(u"FNAME", String(u"x")); }), ErrorNumber::NotUpdatable);
}

TEST_P(ContractTest, ResultOfTwoTablesIsNotUpdatable) {
  Insert(String(u"Ann"));
  Recordset rows = Editable(u"SELECT ID, FNAME FROM CONTACTS UNION SELECT ID, NOTE FROM CONTACTS");
  rows.SetField(u"FNAME", String(u"x"));
  EXPECT_EQ(FailureOf([&] { rows.Update(); }), ErrorNumber::NotUpdatable);
}

TEST_P(ContractTest, RefusedRowStaysPending) {
  connection.Execute(u"INSERT INTO CONTACTS (ID) VALUES (7)");
  Recordset rows = Editable(u"SELECT * FROM CONTACTS WHERE 1 = 2");
  rows.AddNew();
  rows.SetField(u"ID", std::int64_t{7});
  EXPECT_EQ(FailureOf([&] { rows.Update(); }), ErrorNumber::IntegrityViolation);
  rows.SetField(u"ID", std::int64_t{8});
  rows.Update();
  EXPECT_EQ(Query(u"SELECT * FROM CONTACTS").RecordCount(), 2);
}

TEST_P(ContractTest, MoveWritesWhatIsPending) {
  Insert(String(u"Ann"));
  Recordset rows = Editable(u"SELECT * FROM CONTACTS");
  rows.SetField(u"FNAME", String(u"Bob"));
  rows.MoveNext();
  EXPECT_EQ(Value(u"SELECT FNAME FROM CONTACTS"), Variant(String(u"Bob")));
}

TEST_P(ContractTest, FieldRefusesAValueOfAnotherKind) {
  Insert(String(u"Ann"));
  Recordset rows = Editable(u"SELECT * FROM CONTACTS");
  EXPECT_EQ(FailureOf([&] { rows.SetField(u"FOLDER_ID", String(u"abc")); }),
            ErrorNumber::DataConversion);
}

TEST_P(ContractTest, TransactionThatIsUndoneStoresNothing) {
  Insert(String(u"Ann"));
  {
    database::Transaction transaction(connection);
    Insert(String(u"Bob"));
    Recordset rows = Editable(u"SELECT * FROM CONTACTS WHERE ID = 1");
    rows.SetField(u"FNAME", String(u"Cid"));
    rows.Update();
    rows.AddNew();
    rows.SetField(u"FNAME", String(u"Dot"));
    rows.Update();
    EXPECT_TRUE(transaction.RollBack());
  }
  EXPECT_EQ(Query(u"SELECT * FROM CONTACTS").RecordCount(), 1);
  EXPECT_EQ(Value(u"SELECT FNAME FROM CONTACTS"), Variant(String(u"Ann")));
  Insert(String(u"Eve"));
  Recordset others(environment);
  others.Open(u"SELECT * FROM CONTACTS", testDatabase->ConnectionString());
  EXPECT_EQ(others.RecordCount(), 2) << "what follows is stored again";
}

TEST_P(ContractTest, TransactionThatIsCommittedIsStoredForAll) {
  {
    database::Transaction transaction(connection);
    Insert(String(u"Ann"));
    Insert(String(u"Bob"));
    transaction.Commit();
  }
  database::Recordset rows(environment);
  rows.Open(u"SELECT * FROM CONTACTS", testDatabase->ConnectionString());
  EXPECT_EQ(rows.RecordCount(), 2);
}

TEST_P(ContractTest, StatementThatFailsDoesNotUndoThoseBeforeIt) {
  database::Command insert;
  insert.SetActiveConnection(&connection);
  insert.SetCommandText(u"INSERT INTO CONTACTS (FNAME) VALUES (?)");
  insert.Append(u"FNAME", database::DataType::VarWChar, 50);
  insert.Execute({String(u"Ann")});
  for (const StringView name : {u"Bob", u"Cid"}) {
    database::Transaction transaction(connection);
    insert.Execute({String(name)});
    EXPECT_THROW(connection.Execute(u"INSERT INTO NOWHERE (FNAME) VALUES ('x')"), Error);
    transaction.Commit();
  }
  insert.Execute({String(u"Dot")});  // what was prepared outlives a transaction
  Recordset rows(environment);
  rows.Open(u"SELECT * FROM CONTACTS", testDatabase->ConnectionString());
  EXPECT_EQ(rows.RecordCount(), 4);
}

TEST_P(ContractTest, SessionThatEndsWithinATransactionStoresNothing) {
  {
    database::Connection other(environment);
    other.Open(testDatabase->ConnectionString());
    EXPECT_TRUE(other.CurrentLink()->Get().Begin());
    other.Execute(u"INSERT INTO CONTACTS (FNAME) VALUES ('Ann')");
  }
  EXPECT_EQ(Query(u"SELECT * FROM CONTACTS").RecordCount(), 0);
  Insert(String(u"Bob"));
}

TEST_P(ContractTest, RecordsetOnAConnectionStringIsUpdatable) {
  Insert(String(u"Ann"));
  Recordset rows(environment);
  rows.Open(u"SELECT * FROM CONTACTS", testDatabase->ConnectionString(),
            {.Cursor = database::CursorType::Dynamic, .Lock = database::LockType::Optimistic});
  rows.SetField(u"FNAME", String(u"Bob"));
  rows.Update();
  rows.Close();
  EXPECT_EQ(Value(u"SELECT FNAME FROM CONTACTS"), Variant(String(u"Bob")));
}

}  // namespace
}  // namespace ktrv::tests
