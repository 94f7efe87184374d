#include "tests/contract/ContractTest.h"

namespace ktrv::tests {
namespace {

using database::ObjectState;
using database::Recordset;

TEST_P(ContractTest, FieldIsFoundWhateverItsCase) {
  Insert(String(u"Ann"));
  Recordset rows = Query(u"SELECT FNAME FROM CONTACTS");
  EXPECT_EQ(rows.Field(u"FName"), Variant(String(u"Ann")));
  EXPECT_EQ(rows.ColumnIndex(u"fname"), 0u);
}

TEST_P(ContractTest, UnknownFieldFails) {
  Insert(String(u"Ann"));
  Recordset rows = Query(u"SELECT FNAME FROM CONTACTS");
  EXPECT_EQ(FailureOf([&] { rows.Field(u"LNAME"); }), ErrorNumber::ItemNotFound);
  EXPECT_EQ(rows.ColumnIndex(u"LNAME"), std::nullopt);
}

TEST_P(ContractTest, AliasNamesTheColumn) {
  EXPECT_TRUE(Query(u"SELECT COUNT(1) AS TOTALRECORDS FROM CONTACTS").ColumnIndex(u"TotalRecords"));
}

TEST_P(ContractTest, RowsAreWalkedInOrderToTheEnd) {
  for (const char16_t* name : {u"A", u"B", u"C"}) Insert(String(name));
  Recordset rows = Query(u"SELECT FNAME FROM CONTACTS ORDER BY FNAME");
  String names;
  for (; !rows.EndOfFile(); rows.MoveNext()) names += ToText(rows.Field(u"FNAME"));
  EXPECT_EQ(names, u"ABC");
  EXPECT_EQ(FailureOf([&] { rows.Field(u"FNAME"); }), ErrorNumber::NoCurrentRecord);
  EXPECT_EQ(FailureOf([&] { rows.MoveNext(); }), ErrorNumber::NoCurrentRecord);
  rows.MoveFirst();
  EXPECT_EQ(ToText(rows.Field(u"FNAME")), u"A");
}

TEST_P(ContractTest, EmptyResultIsAtBothEndsAndKnowsItsColumns) {
  Recordset rows = Query(u"SELECT * FROM CONTACTS WHERE 1 = 2");
  EXPECT_TRUE(rows.EndOfFile());
  EXPECT_TRUE(rows.BeginningOfFile());
  EXPECT_EQ(rows.Columns().size(), 6u);
  EXPECT_EQ(FailureOf([&] { rows.Field(u"ID"); }), ErrorNumber::NoCurrentRecord);
}

TEST_P(ContractTest, ManyRowsAllCome) {
  Insert(String(u"x"));
  for (int doubling = 0; doubling < 12; ++doubling) {
    connection.Execute(u"INSERT INTO CONTACTS (FNAME) SELECT FNAME FROM CONTACTS");
  }
  Recordset rows = Query(u"SELECT ID, FNAME FROM CONTACTS ORDER BY ID");
  ASSERT_EQ(rows.RecordCount(), 4096);
  EXPECT_EQ(rows.CellText(4095, 1), u"x");
}

TEST_P(ContractTest, StatementWithoutRowsLeavesTheRecordsetClosed) {
  Recordset rows = Query(u"UPDATE CONTACTS SET FNAME = 'x'");
  EXPECT_EQ(rows.State(), ObjectState::Closed);
  EXPECT_EQ(FailureOf([&] { rows.EndOfFile(); }), ErrorNumber::ObjectClosed);
}

TEST_P(ContractTest, OpenRecordsetCannotBeOpenedAgainUntilClosed) {
  Recordset rows = Query(u"SELECT * FROM CONTACTS");
  const auto open = [&] { rows.Open(u"SELECT * FROM CONTACTS", connection); };
  EXPECT_EQ(FailureOf(open), ErrorNumber::ObjectOpen);
  rows.Close();
  EXPECT_EQ(FailureOf([&] { rows.Close(); }), ErrorNumber::ObjectClosed);
  EXPECT_EQ(FailureOf(open), 0);
}

TEST_P(ContractTest, RecordsetOpensOnAConnectionString) {
  Insert(String(u"Ann"));
  Recordset rows(environment);
  rows.Open(u"SELECT FNAME FROM CONTACTS", testDatabase->ConnectionString());
  EXPECT_EQ(rows.RecordCount(), 1);
}

TEST_P(ContractTest, ClosedConnectionRunsNothingUntilOpenedAgain) {
  database::Command command;
  command.SetActiveConnection(&connection);
  command.SetCommandText(u"SELECT COUNT(1) AS N FROM CONTACTS WHERE FOLDER_ID = ?");
  command.Append(u"FOLDER_ID", database::DataType::Integer);
  const auto execute = [&] { return command.Execute({std::int64_t{0}}); };
  EXPECT_EQ(ToText(execute().Field(u"N")), u"0");
  connection.Close();
  EXPECT_EQ(connection.State(), ObjectState::Closed);
  EXPECT_EQ(FailureOf(execute), ErrorNumber::InvalidConnection);
  EXPECT_EQ(FailureOf([&] { Query(u"SELECT * FROM CONTACTS"); }), ErrorNumber::InvalidConnection);
  EXPECT_EQ(FailureOf([&] { connection.Close(); }), ErrorNumber::ObjectClosed);
  connection.Open(testDatabase->ConnectionString());
  EXPECT_EQ(ToText(execute().Field(u"N")), u"0");
}

TEST_P(ContractTest, OpenConnectionCannotBeOpenedAgain) {
  EXPECT_EQ(FailureOf([&] { connection.Open(testDatabase->ConnectionString()); }),
            ErrorNumber::ObjectOpen);
}

TEST_P(ContractTest, MissingTableFails) {
  EXPECT_EQ(FailureOf([&] { Query(u"SELECT * FROM NO_SUCH_TABLE"); }), ErrorNumber::TableNotFound);
}

TEST_P(ContractTest, TextThatIsNoSqlFails) {
  EXPECT_EQ(FailureOf([&] { Query(u"SELEKT * FROM CONTACTS"); }), ErrorNumber::SyntaxOrPermission);
}

TEST_P(ContractTest, EmptyTextFails) {
  EXPECT_EQ(FailureOf([&] { Query(u""); }), ErrorNumber::NoCommandText);
}

TEST_P(ContractTest, DoubledKeyFails) {
  connection.Execute(u"INSERT INTO CONTACTS (ID) VALUES (7)");
  EXPECT_EQ(FailureOf([&] { connection.Execute(u"INSERT INTO CONTACTS (ID) VALUES (7)"); }),
            ErrorNumber::IntegrityViolation);
}

TEST_P(ContractTest, ConnectionToAnUnknownDriverFails) {
  database::Connection other(environment);
  EXPECT_EQ(FailureOf([&] { other.Open(u"Driver=No Such Driver;Database=x"); }),
            ErrorNumber::DriverFailure);
  EXPECT_EQ(other.State(), ObjectState::Closed);
}

TEST_P(ContractTest, ConnectionStringThatSaysNothingFails) {
  database::Connection other(environment);
  EXPECT_NE(FailureOf([&] { other.Open(u""); }), 0);
  EXPECT_NE(FailureOf([&] { other.Open(u"nonsense"); }), 0);
}

}  // namespace
}  // namespace ktrv::tests
