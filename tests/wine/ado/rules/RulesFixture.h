#pragma once

#include <windows.h>
#include <objbase.h>

#include <gtest/gtest.h>

#include "database/ado/Constants.h"
#include "database/ado/Object.h"
#include "tests/native/support/SqliteFile.h"

namespace ktrv::tests {

using database::ado::Object;
using database::ado::Value;
namespace AdoType = database::ado::AdoType;

/// An open connection of the server to a database with the table T of two rows, 1 Ann and 2 Bob.
class AdoRules : public testing::Test {
 protected:
  AdoRules() {
    file.Run({u"CREATE TABLE T (ID INTEGER PRIMARY KEY, NAME VARCHAR(20), DAY DATE)",
              u"INSERT INTO T VALUES (1, 'Ann', '2024-02-29'), (2, 'Bob', NULL)"});
    Open(connection);
  }

  String Text() const { return u"Provider=MSDASQL;" + file.ConnectionString(); }
  void Open(const Object& which) const {
    const Value text{StringView(Text())};
    which.Call(L"Open", {&text});
  }

  /// A command with this text on the connection.
  Object Command(StringView text) const {
    Object command = Object::Create(L"ADODB.Command");
    command.PutReference(L"ActiveConnection", connection);
    command.Put(L"CommandText", Value(text));
    return command;
  }

  Object Rows(StringView text) const { return Object(Command(text).Call(L"Execute")); }

  /// A parameter of the command that is not appended.
  static Object Parameter(const Object& command, std::int32_t type, std::int32_t size = 0,
                          std::int32_t direction = 1) {
    const Value name{StringView(u"P")};
    const Value typeValue(type);
    const Value directionValue(direction);
    const Value sizeValue(size);
    return Object(
        command.Call(L"CreateParameter", {&name, &typeValue, &directionValue, &sizeValue}));
  }

  static void Append(const Object& command, const Object& parameter) {
    const Value reference = parameter.Reference();
    command.Part(L"Parameters").Call(L"Append", {&reference});
  }

  /// The number of the failure of the action; 0 when it does not fail.
  template <class Action>
  static std::int32_t NumberOf(Action&& action) {
    try {
      action();
      return 0;
    } catch (const Error& error) {
      EXPECT_FALSE(error.Description().empty());
      return error.Number();
    }
  }

  /// Waits until the recordset's work in the background has ended. \return its state then.
  static std::int64_t StateAtEnd(const Object& rows) {
    const auto deadline = GetTickCount64() + 20000;
    while ((rows.GetWhole(L"State") & database::ado::AdoState::Executing) != 0) {
      if (GetTickCount64() > deadline) return -1;
      Sleep(1);
    }
    return rows.GetWhole(L"State");
  }

  static constexpr StringView kEndless =
      u"WITH RECURSIVE N(I) AS (SELECT 1 UNION ALL SELECT I + 1 FROM N) SELECT COUNT(*) FROM N";

  SqliteFile file;
  Object connection = Object::Create(L"ADODB.Connection");
};

}  // namespace ktrv::tests
