#include "database/ado/AdoDriver.h"

#include <windows.h>
#include <objbase.h>

#include <gtest/gtest.h>
#include <thread>

#include "common/Error.h"
#include "tests/native/support/SqliteFile.h"

namespace ktrv::tests {
namespace {

using database::DataType;

/// What the driver does that the suite of all drivers does not ask.
class AdoDriverTest : public testing::Test {
 protected:
  AdoDriverTest() {
    file.Run({u"CREATE TABLE T (ID INTEGER PRIMARY KEY, NAME VARCHAR(20), N INT)"});
  }

  std::unique_ptr<database::Link> Open(StringView user = u"", StringView password = u"") {
    return driver.Open(u"Provider=MSDASQL;" + file.ConnectionString(), user, password);
  }

  std::optional<Error> FailureOf(const std::function<void()>& action) {
    try {
      action();
    } catch (const Error& error) {
      return error;
    }
    return std::nullopt;
  }

  static std::int64_t Run(database::Link& link, StringView text) {
    const auto statement = link.Prepare(text, {});
    statement->Execute({});
    return statement->RowsAffected();
  }

  SqliteFile file;
  database::AdoDriver driver;
};

TEST_F(AdoDriverTest, ProviderThatIsNotInstalledIsTold) {
  const auto failure =
      FailureOf([&] { driver.Open(u"Provider=SQLOLEDB;Data Source=nowhere", u"", u""); });
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->Number(), 3706);
  EXPECT_EQ(failure->Description(), u"Provider cannot be found. It may not be properly installed.");
  EXPECT_EQ(failure->Source(), u"ADODB");
}

TEST_F(AdoDriverTest, FailureKeepsTheProvidersNumberTextAndSource) {
  const auto link = Open();
  const auto failure = FailureOf([&] { Run(*link, u"SELECT * FROM NO_SUCH_TABLE"); });
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->Number(), ErrorNumber::TableNotFound);
  EXPECT_NE(failure->Description().find(u"no such table: NO_SUCH_TABLE"), String::npos);
  EXPECT_NE(ToUpperAscii(failure->Source()).find(u"SQLITE"), String::npos);
}

TEST_F(AdoDriverTest, FailureInTheBackgroundKeepsThemToo) {
  std::optional<Error> failure;
  std::thread([&] {
    failure = FailureOf([&] { Run(*Open(), u"SELECT * FROM NO_SUCH_TABLE"); });
  }).join();
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->Number(), ErrorNumber::TableNotFound);
  EXPECT_NE(failure->Description().find(u"no such table: NO_SUCH_TABLE"), String::npos);
  EXPECT_NE(ToUpperAscii(failure->Source()).find(u"SQLITE"), String::npos);
}

TEST_F(AdoDriverTest, ChangedRowsAreToldWhereTheHostHasCom) {
  const auto link = Open();
  EXPECT_EQ(Run(*link, u"INSERT INTO T (NAME) VALUES ('a'), ('b')"), 2);
  EXPECT_EQ(Run(*link, u"SELECT * FROM T"), -1);
  std::thread([&] { EXPECT_EQ(Run(*Open(), u"UPDATE T SET N = 1"), -1); }).join();
  EXPECT_EQ(Run(*link, u"DELETE FROM T WHERE N = 1"), 2);
}

TEST_F(AdoDriverTest, ThreadKeepsTheComThatItHasAndLosesTheOneThatTheLinkBrought) {
  std::thread([&] {
    Open().reset();
    APTTYPE type = APTTYPE_CURRENT;
    APTTYPEQUALIFIER qualifier = APTTYPEQUALIFIER_NONE;
    const HRESULT result = CoGetApartmentType(&type, &qualifier);
    EXPECT_TRUE(result != S_OK || qualifier == APTTYPEQUALIFIER_IMPLICIT_MTA);
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    Open().reset();
    EXPECT_EQ(CoGetApartmentType(&type, &qualifier), S_OK);
    EXPECT_EQ(type, APTTYPE_STA);
    CoUninitialize();
    EXPECT_NE(CoGetApartmentType(&type, &qualifier), S_OK);
  }).join();
}

TEST_F(AdoDriverTest, ParameterFollowsTheKindOfEachValue) {
  const auto link = Open();
  const std::vector<database::Parameter> parameters = {{u"NAME", DataType::VarChar, 3},
                                                       {u"N", DataType::Integer, 0}};
  const auto insert = link->Prepare(u"INSERT INTO T (NAME, N) VALUES (?, ?)", parameters);
  const std::vector<std::vector<Variant>> rows = {
      {String(u"abc"), std::int64_t{1}},
      {String(u"नाम"), std::int64_t{1} << 40},
      {Null{}, Null{}},
      {String(u"longer than it says"), 0.5},
      {String(u"x"), String(u"C-17")},
  };
  for (const auto& values : rows) insert->Execute(values);
  const auto select = link->Prepare(u"SELECT NAME, CAST(N AS TEXT) AS N FROM T ORDER BY ID", {});
  select->Execute({});
  const auto block = select->Fetch(10);
  ASSERT_EQ(block->Rows(), 5u);
  EXPECT_EQ(block->Cell(0, 0), u"abc");
  EXPECT_EQ(block->Cell(1, 0), u"नाम");
  EXPECT_EQ(block->Cell(1, 1), u"1099511627776");
  EXPECT_EQ(block->Cell(2, 0), std::nullopt);
  EXPECT_EQ(block->Cell(2, 1), std::nullopt);
  EXPECT_EQ(block->Cell(3, 0), u"longer than it says");
  EXPECT_EQ(block->Cell(3, 1), u"0.5");
  EXPECT_EQ(block->Cell(4, 1), u"C-17");
}

TEST_F(AdoDriverTest, DateThatAutomationDoesNotKnowIsRefused) {
  const auto link = Open();
  const std::vector<database::Parameter> parameters = {{u"DAY", DataType::Date, 0}};
  const auto statement = link->Prepare(u"SELECT ID FROM T WHERE NAME = ?", parameters);
  const auto execute = [&](StringView day) {
    return FailureOf([&] { statement->Execute(std::vector<Variant>{*ParseDateTime(day)}); });
  };
  EXPECT_FALSE(execute(u"0100-01-01"));
  ASSERT_TRUE(execute(u"0099-12-31"));
  EXPECT_EQ(execute(u"0099-12-31")->Number(), ErrorNumber::DataConversion);
  EXPECT_FALSE(execute(u"9999-12-31")) << "the statement works on";
}

TEST_F(AdoDriverTest, KeyColumnsAreThoseOfTheTable) {
  const auto link = Open();
  EXPECT_EQ(link->KeyColumns(u"T"), std::vector<String>{u"ID"});
  EXPECT_EQ(link->KeyColumns(u"main.T"), std::vector<String>{u"ID"});
  EXPECT_EQ(link->KeyColumns(u"NO_SUCH_TABLE"), std::vector<String>{});
}

TEST_F(AdoDriverTest, UserAndPasswordAreHandedOn) {
  EXPECT_FALSE(FailureOf([&] { Open(u"me", u"secret; with {signs}"); }));
}

TEST_F(AdoDriverTest, StatementThatWasCancelledRunsNoMore) {
  const auto link = Open();
  const auto statement = link->Prepare(u"SELECT * FROM T", {});
  statement->Cancel();
  const auto failure = FailureOf([&] { statement->Execute({}); });
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->Number(), ErrorNumber::CommandCancelled);
}

}  // namespace
}  // namespace ktrv::tests
