#include "database/odbc/ConnectionString.h"

#include <gtest/gtest.h>

namespace ktrv::database::odbc {
namespace {

TEST(ConnectionString, KeywordIsFoundWhateverItsCase) {
  EXPECT_EQ(KeywordValue(u"Driver=SQLite3;DATABASE = /x.db ", u"Database"), u"/x.db");
}

TEST(ConnectionString, MissingKeywordHasNoValue) {
  EXPECT_EQ(KeywordValue(u"Driver=SQLite3", u"Database"), u"");
  EXPECT_EQ(KeywordValue(u"", u"Database"), u"");
}

TEST(ConnectionString, BracesAreTakenOffAValue) {
  EXPECT_EQ(KeywordValue(u"Pwd={a;b=}}c};Driver={SQLite3 ODBC Driver}", u"Pwd"), u"a;b=}c");
  EXPECT_EQ(KeywordValue(u"Pwd={a;b=}}c};Driver={SQLite3 ODBC Driver}", u"Driver"),
            u"SQLite3 ODBC Driver");
}

TEST(ConnectionString, BrokenStringsHaveNoValues) {
  for (const StringView broken : {u";;;", u"=", u"Database", u"Database;x", u"{Database=x"}) {
    EXPECT_EQ(KeywordValue(broken, u"Database"), u"") << ToUtf8(broken);
  }
  EXPECT_EQ(KeywordValue(u"Database={never closed", u"Database"), u"never closed");
}

TEST(ConnectionString, AddedValueIsQuotedWhenItMustBe) {
  EXPECT_EQ(WithKeyword(u"DSN=x", u"Pwd", u"plain"), u"DSN=x;Pwd=plain");
  EXPECT_EQ(WithKeyword(u"DSN=x;", u"Pwd", u"a;b}c"), u"DSN=x;Pwd={a;b}}c}");
}

TEST(ConnectionString, OtherDriversAreNotTakenForPostgreSqls) {
  EXPECT_TRUE(MayBePostgreSql(u"Driver={PostgreSQL Unicode};Server=x"));
  EXPECT_TRUE(MayBePostgreSql(u"DSN=Book"));
  EXPECT_FALSE(MayBePostgreSql(u"Driver={MariaDB Unicode};Database=postgres"));
  EXPECT_FALSE(MayBePostgreSql(u"Driver=SQLite3"));
}

TEST(ConnectionString, UserAndPasswordAreAddedOnlyWhenGiven) {
  EXPECT_EQ(CompleteConnectionString(u"DSN=x", u"", u""), u"DSN=x");
  EXPECT_EQ(CompleteConnectionString(u"DSN=x", u"ann", u"s"), u"DSN=x;Uid=ann;Pwd=s");
}

TEST(ConnectionString, SqliteStreamsRefusesMissingFilesAndGivesUpOnLocks) {
  EXPECT_EQ(CompleteConnectionString(u"Driver={SQLite3 ODBC Driver};Database=/x", u"", u""),
            u"Driver={SQLite3 ODBC Driver};Database=/x;StepAPI=1;NoCreat=1;Timeout=3000");
}

TEST(ConnectionString, PostgreSqlSendsArraysInFewParts) {
  EXPECT_EQ(CompleteConnectionString(u"Driver={PostgreSQL Unicode};Server=x", u"", u""),
            u"Driver={PostgreSQL Unicode};Server=x;BatchSize=500");
  const String given = u"Driver={PostgreSQL Unicode};batchsize=7";
  EXPECT_EQ(CompleteConnectionString(given, u"", u""), given);
}

TEST(ConnectionString, SettingsThatAreGivenStay) {
  const String given = u"Driver=SQLite3;stepapi=0;NOCREAT=0;Timeout=5";
  EXPECT_EQ(CompleteConnectionString(given, u"", u""), given);
}

TEST(ConnectionString, TimeLimitsAreAdosUnlessTheStringSaysOtherwise) {
  using std::chrono::seconds;
  const auto limits = [](StringView text) {
    const TimeLimits found = TimeLimitsOf(text);
    return std::pair(static_cast<int>(found.Opening / seconds(1)),
                     static_cast<int>(found.Statement / seconds(1)));
  };
  EXPECT_EQ(limits(u"DSN=x"), std::pair(15, 30));
  EXPECT_EQ(limits(u"DSN=x;Connect Timeout=5;Command Timeout = 7"), std::pair(5, 7));
  EXPECT_EQ(limits(u"connectiontimeout=1;QUERYTIMEOUT=2;Server=x"), std::pair(1, 2));
  EXPECT_EQ(limits(u"CONN_TIMEOUT=0;commandtimeout=0"), std::pair(0, 0));
  EXPECT_EQ(limits(u"Login Timeout={9}"), std::pair(9, 30));
  for (const StringView nonsense :
       {u"Connect Timeout=", u"Connect Timeout=-1", u"Connect Timeout=5s", u"Timeout=5",
        u"Connect Timeout=99999999999999999999", u"Pwd={a;Connect Timeout=5}"}) {
    EXPECT_EQ(limits(nonsense), std::pair(15, 30)) << ToUtf8(nonsense);
  }
  EXPECT_EQ(TimeLimitsOf(u"DSN=x", {seconds(1), seconds(2)}).Statement, seconds(2));
}

TEST(ConnectionString, SeveralServersShareTheTimeOfOpening) {
  using std::chrono::seconds;
  EXPECT_EQ(LongestForEachServer(u"Server=a;Port=1"), seconds(15));
  EXPECT_EQ(LongestForEachServer(u"Server=a,b;Port=1,2"), seconds(7));
  EXPECT_EQ(LongestForEachServer(u"Server=a,b,c;Connect Timeout=2"), seconds(1));
  EXPECT_EQ(LongestForEachServer(u"Server=a,b;Connect Timeout=0"), seconds(0));
}

}  // namespace
}  // namespace ktrv::database::odbc
