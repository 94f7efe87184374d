#include "tests/contract/ContractTest.h"

namespace ktrv::tests {
namespace {

using database::Command;
using database::DataType;
using database::ObjectState;

class CommandOn : public Command {
 public:
  CommandOn(database::Connection& connection, String text) {
    SetActiveConnection(&connection);
    SetCommandText(std::move(text));
    Prepared = true;
  }
};

TEST_P(ContractTest, CommandRunsAgainWithOtherValues) {
  Insert(String(u"Ann"));
  Insert(String(u"Bob"));
  CommandOn command(connection, u"SELECT ID FROM CONTACTS WHERE FNAME = ?");
  command.Append(u"NAME", DataType::VarWChar, 100);
  EXPECT_EQ(ToText(command.Execute({String(u"Ann")}).Field(u"ID")), u"1");
  EXPECT_EQ(ToText(command.Execute({String(u"Bob")}).Field(u"ID")), u"2");
  EXPECT_TRUE(command.Execute({String(u"Cid")}).EndOfFile());
}

TEST_P(ContractTest, CommandWithoutRowsGivesAClosedRecordset) {
  CommandOn command(connection, u"UPDATE CONTACTS SET FNAME = ? WHERE ID = ?");
  command.Append(u"NAME", DataType::VarWChar, 100);
  command.Append(u"ID", DataType::Integer);
  EXPECT_EQ(command.Execute({String(u"x"), std::int64_t{99}}).State(), ObjectState::Closed);
}

TEST_P(ContractTest, CommandWantsOneValueForEachParameter) {
  CommandOn command(connection, u"SELECT 1 AS ONE FROM CONTACTS WHERE ID = ?");
  command.Append(u"ID", DataType::Integer);
  EXPECT_EQ(FailureOf([&] { command.Execute(); }), ErrorNumber::InvalidArgument);
  EXPECT_EQ(FailureOf([&] {
              command.Execute({std::int64_t{1}, std::int64_t{2}});
            }),
            ErrorNumber::InvalidArgument);
}

TEST_P(ContractTest, WholeNumberParameterTakesWhatReadsAsOne) {
  Insert(String(u"Ann"));
  CommandOn command(connection, u"SELECT FNAME FROM CONTACTS WHERE ID = ?");
  command.Append(u"ID", DataType::Integer);
  EXPECT_FALSE(command.Execute({String(u"1")}).EndOfFile());
  EXPECT_FALSE(command.Execute({1.0}).EndOfFile());
  EXPECT_TRUE(command.Execute({Null{}}).EndOfFile());
  for (const Variant& wrong : {Variant(String(u"one")), Variant(String()),
                               Variant(std::int64_t{2147483648}), Variant(DateTime())}) {
    EXPECT_EQ(FailureOf([&] { command.Execute({wrong}); }), ErrorNumber::DataConversion);
  }
}

TEST_P(ContractTest, TextParameterRefusesMoreThanItsSize) {
  CommandOn command(connection, u"SELECT FNAME FROM CONTACTS WHERE FNAME = ?");
  command.Append(u"NAME", DataType::VarWChar, 3);
  EXPECT_EQ(FailureOf([&] { command.Execute({String(u"abc")}); }), 0);
  EXPECT_EQ(FailureOf([&] { command.Execute({String(u"abcd")}); }), ErrorNumber::DataConversion);
}

TEST_P(ContractTest, NarrowTextParameterKeepsEveryScript) {
  CommandOn command(connection, u"INSERT INTO CONTACTS (FNAME) VALUES (?)");
  command.Append(u"NAME", DataType::VarChar, 100);
  command.Execute({String(u"Zoë नमस्ते")});
  EXPECT_EQ(Value(u"SELECT FNAME FROM CONTACTS"), Variant(String(u"Zoë नमस्ते")));
}

TEST_P(ContractTest, PreparedTextTakesNumbersOfEverySizeOneAfterTheOther) {
  constexpr std::int64_t kOfEightBytes = std::int64_t{1} << 40;
  connection.Execute(u"CREATE TABLE COUNTS (N BIGINT)");
  connection.Execute(u"INSERT INTO COUNTS VALUES (5)");
  connection.Execute(u"INSERT INTO COUNTS VALUES (" + ToDecimal(kOfEightBytes) + u")");
  const auto link = testDatabase->Driver().Open(testDatabase->ConnectionString(), {}, {});
  const std::vector<database::Parameter> parameters = {{u"N", DataType::Integer, 0}};
  const auto statement = link->Prepare(u"SELECT N FROM COUNTS WHERE N = ?", parameters);
  const auto found = [&](Variant number) {
    statement->Execute(std::vector<Variant>{std::move(number)});
    const auto rows = statement->Fetch(2);
    return rows ? String(*rows->Cell(0, 0)) : String(u"nothing");
  };
  EXPECT_EQ(found(std::int64_t{5}), u"5");
  EXPECT_EQ(found(kOfEightBytes), ToDecimal(kOfEightBytes));
  EXPECT_EQ(found(Null{}), u"nothing");
  EXPECT_EQ(found(std::int64_t{5}), u"5");
  EXPECT_EQ(found(kOfEightBytes + 5), u"nothing");
}

TEST_P(ContractTest, NumberIsFoundByItsText) {
  Insert(String(u"Ann"));
  CommandOn command(connection, u"SELECT FNAME FROM CONTACTS WHERE ID = ? ");
  command.Append(u"ID", DataType::VarChar, 100);
  EXPECT_EQ(ToText(command.Execute({String(u"1")}).Field(u"FNAME")), u"Ann");
}

TEST_P(ContractTest, RefusedTextFailsWhenExecutedAndEveryTime) {
  CommandOn command(connection, u"SELECT * FROM NO_SUCH_TABLE");
  EXPECT_EQ(FailureOf([&] { command.Execute(); }), ErrorNumber::TableNotFound);
  EXPECT_EQ(FailureOf([&] { command.Execute(); }), ErrorNumber::TableNotFound);
}

TEST_P(ContractTest, CommandNeedsAConnectionAndAText) {
  Command command;
  command.SetCommandText(u"SELECT 1 AS ONE");
  EXPECT_EQ(FailureOf([&] { command.Execute(); }), ErrorNumber::InvalidConnection);
  command.SetActiveConnection(&connection);
  EXPECT_EQ(FailureOf([&] { command.Execute(); }), 0);
  command.SetCommandText(u"");
  EXPECT_EQ(FailureOf([&] { command.Execute(); }), ErrorNumber::NoCommandText);
}

TEST_P(ContractTest, CommandMayOutliveItsConnection) {
  auto shortLived = std::make_unique<database::Connection>(environment);
  shortLived->Open(testDatabase->ConnectionString());
  CommandOn command(*shortLived, u"SELECT 1 AS ONE");
  command.Execute();
  shortLived.reset();
  command.SetActiveConnection(nullptr);
  EXPECT_EQ(FailureOf([&] { command.Execute(); }), ErrorNumber::InvalidConnection);
}

TEST_P(ContractTest, ExecuteTellsHowManyRowsChanged) {
  Insert(String(u"a"));
  Insert(String(u"b"));
  EXPECT_EQ(connection.Execute(u"UPDATE CONTACTS SET NOTE = 'x'"), 2);
  EXPECT_EQ(connection.Execute(u"DELETE FROM CONTACTS WHERE FNAME = 'zz'"), 0);
}

TEST_P(ContractTest, NarrowParameterLosesNoScript) {
  // The Greek and the Latin letter are in some code pages; the last is a pair of units.
  for (const StringView name : {u"नाम", u"Ωmega", u"Zoë", u"a😀b", u"Ann"}) {
    database::Command insert;
    insert.SetActiveConnection(&connection);
    insert.SetCommandText(u"INSERT INTO CONTACTS (FNAME) VALUES (?)");
    insert.Append(u"FNAME", database::DataType::VarChar, 100);
    insert.Execute({String(name)});
    database::Command find;
    find.SetActiveConnection(&connection);
    find.SetCommandText(u"SELECT FNAME FROM CONTACTS WHERE FNAME = ?");
    find.Append(u"FNAME", database::DataType::VarChar, 100);
    EXPECT_EQ(find.Execute({String(name)}).Field(u"FNAME"), Variant(String(name)));
    EXPECT_EQ(find.Parameters()[0].Type, database::DataType::VarChar) << "the declared type stays";
  }
}

}  // namespace
}  // namespace ktrv::tests
