#include "tests/native/support/SqliteFile.h"

#include <fstream>
#include <gtest/gtest.h>

#include "database/BackgroundFetch.h"
#include "database/Recordset.h"
#include "tests/native/support/TestDispatcher.h"

namespace ktrv::tests {
namespace {

using database::Connection;
using database::EventStatus;
using database::Recordset;

/// What happens to a database that is a file.
class SqliteFileTest : public testing::Test {
 protected:
  SqliteFileTest() {
    file.Run({u"CREATE TABLE T (ID INTEGER PRIMARY KEY, NAME TEXT)",
              u"INSERT INTO T WITH RECURSIVE N(I) AS (SELECT 1 UNION ALL SELECT I + 1 FROM N "
              u"LIMIT 50000) SELECT I, 'a name of some length ' || I FROM N"});
  }

  std::optional<Error> FailureOf(const std::function<void()>& action) {
    try {
      action();
    } catch (const Error& error) {
      return error;
    }
    return std::nullopt;
  }

  SqliteFile file;
  TestDispatcher dispatcher;
  database::Environment environment = file.Surroundings(dispatcher.Post());
};

TEST_F(SqliteFileTest, MissingFileIsAFailureAndIsNotMade) {
  const std::string path = "/tmp/ktrv-test-no-such-file.db";
  Connection connection(environment);
  const auto failure = FailureOf([&] { connection.Open(SqliteFile::ConnectionStringOf(path)); });
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->Number(), ErrorNumber::DriverFailure);
  EXPECT_FALSE(std::filesystem::exists(SqliteFile::FileOf(path)));
}

TEST_F(SqliteFileTest, FileThatIsNoDatabaseFails) {
  std::ofstream(file.File(), std::ios::binary) << std::string(8192, 'x');
  const auto failure = FailureOf([&] {
    Connection connection(environment);
    connection.Open(file.ConnectionString());
    Recordset rows(environment);
    rows.Open(u"SELECT * FROM T", connection);
  });
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->Number(), ErrorNumber::DriverFailure);
  EXPECT_NE(failure->Description().find(u"not a database"), String::npos);
}

TEST_F(SqliteFileTest, LockedFileTimesOut) {
  Connection holder(environment);
  holder.Open(file.ConnectionString());
  holder.Execute(u"BEGIN EXCLUSIVE");
  Connection connection(environment);
  const auto start = std::chrono::steady_clock::now();
  const auto failure = FailureOf([&] {
    connection.Open(file.ConnectionString() + u";Timeout=100");
    connection.Execute(u"DELETE FROM T");
  });
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->Number(), ErrorNumber::TimedOut);
  holder.Execute(u"ROLLBACK");
}

TEST_F(SqliteFileTest, FirstRowsComeWhileTheQueryStillRuns) {
  Recordset rows(environment);
  std::vector<std::int64_t> progress;
  rows.FetchProgress = [&](std::int64_t count, std::int64_t) { progress.push_back(count); };
  rows.Open(u"WITH RECURSIVE N(I) AS (SELECT 1 UNION ALL SELECT I + 1 FROM N) SELECT I FROM N",
            file.ConnectionString(), {.Async = true});
  ASSERT_TRUE(dispatcher.RunUntil([&] { return progress.size() > 3; }));
  EXPECT_EQ(rows.State(), database::ObjectState::Fetching);
  rows.Close();
  EXPECT_TRUE(WaitForFetches());
}

TEST_F(SqliteFileTest, FileThatLostItsEndFailsTheFetchAndNotTheProgram) {
  Recordset rows(environment);
  rows.BackgroundFetchSize = 100;
  std::optional<EventStatus> end;
  rows.FetchComplete = [&](const Error* error, EventStatus status) {
    end = status;
    EXPECT_NE(error, nullptr);
  };
  const auto size = std::filesystem::file_size(file.File());
  std::filesystem::resize_file(file.File(), size / 2 / 4096 * 4096);
  rows.Open(u"SELECT ID, NAME FROM T ORDER BY ID", file.ConnectionString(), {.Async = true});
  ASSERT_TRUE(dispatcher.RunUntil([&] { return end.has_value(); }));
  EXPECT_EQ(*end, EventStatus::ErrorsOccurred);
}

TEST_F(SqliteFileTest, PathInAnotherScriptIsOpened) {
  const std::string path = "/tmp/ktrv-test-Адреса-😀.db";
  std::filesystem::copy_file(file.File(), std::filesystem::path(SqliteFile::FileOf(path)),
                             std::filesystem::copy_options::overwrite_existing);
  Connection connection(environment);
  EXPECT_FALSE(FailureOf([&] { connection.Open(SqliteFile::ConnectionStringOf(path)); }));
  Recordset rows(environment);
  rows.Open(u"SELECT COUNT(*) AS N FROM T", connection);
  EXPECT_EQ(ToText(rows.Field(u"N")), u"50000");
  connection.Close();
  std::filesystem::remove(SqliteFile::FileOf(path));
}

TEST_F(SqliteFileTest, TextInAColumnOfNumbersComesThrough) {
  file.Run({u"CREATE TABLE LOOSE (ID INTEGER, AGE REAL, DAY DATE)",
            u"INSERT INTO LOOSE VALUES ('C-17', 'unknown', 'in May')"});
  Recordset rows(environment);
  rows.Open(u"SELECT * FROM LOOSE", file.ConnectionString());
  EXPECT_EQ(rows.Field(u"ID"), Variant(String(u"C-17")));
  EXPECT_EQ(rows.Field(u"AGE"), Variant(String(u"unknown")));
  EXPECT_EQ(rows.Field(u"DAY"), Variant(String(u"in May")));
}

}  // namespace
}  // namespace ktrv::tests
