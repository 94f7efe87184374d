#pragma once

#include <gtest/gtest.h>

#include "database/Command.h"
#include "tests/contract/TestDatabase.h"
#include "tests/native/support/TestDispatcher.h"

namespace ktrv::tests {

/// A database with the empty table CONTACTS, and an open connection to it.
class ContractTest : public testing::TestWithParam<TestEngine> {
 protected:
  ContractTest() {
    connection.Open(testDatabase->ConnectionString());
    connection.Execute(u"CREATE TABLE CONTACTS (" + String(testDatabase->KeyColumn()) +
                       u", FNAME " + String(testDatabase->TextType()) + u", NOTE " +
                       String(testDatabase->LongTextType()) + u", AGE " +
                       String(testDatabase->FractionType()) + u", BIRTHDAY " +
                       String(testDatabase->DateType()) + u", FOLDER_ID " +
                       String(testDatabase->NumberType()) + u")");
  }

  void Insert(Variant name, Variant note = Null{}, Variant age = Null{}, Variant birthday = Null{},
              Variant folder = Null{}) {
    database::Command command;
    command.SetActiveConnection(&connection);
    command.SetCommandText(
        u"INSERT INTO CONTACTS (FNAME, NOTE, AGE, BIRTHDAY, FOLDER_ID) VALUES (?, ?, ?, ?, ?)");
    command.Append(u"FNAME", database::DataType::VarWChar, 100);
    command.Append(u"NOTE", database::DataType::VarWChar);
    command.Append(u"AGE", database::DataType::Double);
    command.Append(u"BIRTHDAY", database::DataType::Date);
    command.Append(u"FOLDER_ID", database::DataType::Integer);
    command.Execute(
        {std::move(name), std::move(note), std::move(age), std::move(birthday), std::move(folder)});
  }

  database::Recordset Query(StringView text) {
    database::Recordset rows(environment);
    rows.Open(text, connection);
    return rows;
  }

  database::Recordset Editable(StringView text) {
    database::Recordset rows(environment);
    rows.Open(text, connection, {.Lock = database::LockType::Optimistic});
    return rows;
  }

  /// The one value that the query gives.
  Variant Value(StringView text) {
    database::Recordset rows = Query(text);
    return rows.Field(rows.Columns().at(0).Name);
  }

  /// The number of the failure of the action; 0 when it does not fail.
  template <class Action>
  static std::int32_t FailureOf(Action&& action) {
    try {
      action();
      return 0;
    } catch (const Error& error) {
      EXPECT_FALSE(error.Description().empty());
      EXPECT_FALSE(error.Source().empty());
      return error.Number();
    }
  }

  std::unique_ptr<TestDatabase> testDatabase = GetParam().Create();
  TestDispatcher dispatcher;
  database::Environment environment{
      [this](StringView) -> database::Driver& { return testDatabase->Driver(); },
      dispatcher.Post()};
  database::Connection connection{environment};
};

}  // namespace ktrv::tests
