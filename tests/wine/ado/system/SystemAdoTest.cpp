#include <windows.h>
#include <objbase.h>

#include <cstdio>
#include <gtest/gtest.h>

#include "common/Error.h"
#include "database/Recordset.h"
#include "database/ado/AdoDriver.h"
#include "database/ado/Object.h"
#include "tests/native/support/SqliteFile.h"

namespace ktrv::tests {
namespace {

using database::ado::Object;
using database::ado::Value;

constexpr char kFile[] = "/tmp/ktrv-test-ado-of-system.db";
constexpr wchar_t kSources[] = L"Software\\ODBC\\ODBC.INI\\ODBC Data Sources";
constexpr wchar_t kSource[] = L"ktrv_ado_of_system";
constexpr StringView kAdoString = u"Provider=MSDASQL;Data Source=ktrv_ado_of_system";

/// How far the driver gets with the ADO of this system. Wine's lacks a good part: what it does not
/// implement is told, and anything else that fails fails the test.
class SystemAdo : public testing::Test {
 protected:
  SystemAdo() {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    // From Wine 10 on its ODBC looks for a data source where Windows does, and only for its driver.
    constexpr wchar_t kDriver[] = L"SQLite3";
    RegSetKeyValueW(HKEY_CURRENT_USER, kSources, kSource, REG_SZ, kDriver, sizeof kDriver);
    RunByOdbc(u";NoCreat=0", u"DROP TABLE IF EXISTS T");
    RunByOdbc(u"", u"CREATE TABLE T (ID INTEGER PRIMARY KEY, NAME VARCHAR(20))");
  }
  ~SystemAdo() override {
    CoUninitialize();
    RegDeleteKeyValueW(HKEY_CURRENT_USER, kSources, kSource);
    std::error_code ignored;
    std::filesystem::remove(SqliteFile::FileOf(kFile), ignored);
  }

  database::Environment ByOdbc() {
    return {[this](StringView) -> database::Driver& { return odbc_; }, [](const auto&) {}};
  }
  void RunByOdbc(StringView settings, StringView text) {
    database::Connection connection(ByOdbc());
    connection.Open(SqliteFile::ConnectionStringOf(kFile) + String(settings));
    connection.Execute(text);
  }
  String NamesByOdbc() {
    database::Recordset rows(ByOdbc());
    rows.Open(u"SELECT NAME FROM T ORDER BY ID", SqliteFile::ConnectionStringOf(kFile));
    String names;
    for (; !rows.EndOfFile(); rows.MoveNext()) names += ToText(rows.Field(u"NAME")) + u";";
    return names;
  }

  /// Runs the step. \return whether the system has it; when not, that is told.
  template <class Step>
  static bool Has(const char* what, Step&& step) {
    try {
      step();
      return true;
    } catch (const Error& error) {
      // The second: Wine 8 looks for its type library, without which it knows no name, under a
      // version that the library does not have.
      EXPECT_TRUE(error.Number() == E_NOTIMPL || error.Number() == TYPE_E_LIBNOTREGISTERED)
          << what << ": " << ToUtf8(error.Description());
      std::printf("This system's ADO lacks %s\n", what);
      return false;
    }
  }

 private:
  database::OdbcDriver odbc_;
};

TEST_F(SystemAdo, IsTheSystems) {
  const Object connection = Object::Create(L"ADODB.Connection");
  EXPECT_EQ(GetModuleHandleW(L"adoserver.dll"), nullptr);
  EXPECT_NE(GetModuleHandleW(L"msado15.dll"), nullptr);
}

TEST_F(SystemAdo, ConnectionOpensRunsAndCloses) {
  const Object connection = Object::Create(L"ADODB.Connection");
  const Value text(kAdoString);
  if (!Has("Connection.Open", [&] { connection.Call(L"Open", {&text}); })) return;
  EXPECT_EQ(connection.GetWhole(L"State"), 1);
  const Value insert{StringView(u"INSERT INTO T (NAME) VALUES ('Ann')")};
  connection.Call(L"Execute", {&insert});
  connection.Call(L"Close");
  EXPECT_EQ(connection.GetWhole(L"State"), 0);
  EXPECT_EQ(NamesByOdbc(), u"Ann;");
}

TEST_F(SystemAdo, DriverRunsAStatementOrTellsWhyNot) {
  std::unique_ptr<database::Link> link;
  const bool opens =
      Has("what opens a link", [&] { link = database::AdoDriver().Open(kAdoString, u"", u""); });
  const bool runs = opens && Has("what runs a statement", [&] {
                      link->Prepare(u"INSERT INTO T (NAME) VALUES ('Bob')", {})->Execute({});
                    });
  EXPECT_EQ(NamesByOdbc(), runs ? u"Bob;" : u"");
}

TEST_F(SystemAdo, DriverTellsOfAProviderThatIsNotThere) {
  EXPECT_THROW(database::AdoDriver().Open(u"Provider=NoSuchProvider;Data Source=x", u"", u""),
               Error);
}

TEST_F(SystemAdo, MembersOfCommands) {
  const Object command = Object::Create(L"ADODB.Command");
  const Value name{StringView(u"P")};
  const Value type(3);
  const Value direction(1);
  Has("Command.CommandText", [&] { command.Put(L"CommandText", Value(StringView(u"SELECT 1"))); });
  Has("Command.CommandType", [&] { command.Put(L"CommandType", Value(1)); });
  Has("Command.Prepared", [&] { command.Put(L"Prepared", Value(true)); });
  Has("Command.Parameters", [&] { command.Part(L"Parameters"); });
  Has("Command.CreateParameter", [&] {
    command.Call(L"CreateParameter", {&name, &type, &direction});
  });
}

}  // namespace
}  // namespace ktrv::tests
