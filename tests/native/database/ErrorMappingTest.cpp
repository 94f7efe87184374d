#include "database/odbc/ErrorMapping.h"

#include <gtest/gtest.h>

#include "common/Error.h"

namespace ktrv::database::odbc {
namespace {

TEST(ErrorMapping, StateTellsTheNumber) {
  const auto number = [](StringView state) { return NumberOfFailure(state, 0, u"", false); };
  EXPECT_EQ(number(u"42S02"), ErrorNumber::TableNotFound);
  EXPECT_EQ(number(u"42P01"), ErrorNumber::TableNotFound);
  EXPECT_EQ(number(u"42000"), ErrorNumber::SyntaxOrPermission);
  EXPECT_EQ(number(u"23505"), ErrorNumber::IntegrityViolation);
  EXPECT_EQ(number(u"28000"), ErrorNumber::LoginFailed);
  EXPECT_EQ(number(u"HYT00"), ErrorNumber::TimedOut);
  EXPECT_EQ(number(u"57014"), ErrorNumber::CommandCancelled);
  EXPECT_EQ(number(u"HY008"), ErrorNumber::CommandCancelled);
  EXPECT_EQ(number(u"HY018"), ErrorNumber::CommandCancelled);
  EXPECT_EQ(number(u"22018"), ErrorNumber::ValueMismatch);
  EXPECT_EQ(number(u"07006"), ErrorNumber::ValueMismatch);
  EXPECT_EQ(number(u"08S01"), ErrorNumber::DriverFailure);
  EXPECT_EQ(number(u""), ErrorNumber::DriverFailure);
}

TEST(ErrorMapping, SqliteTellsMoreByItsCodeThanByItsState) {
  const auto number = [](std::int32_t code, StringView text) {
    return NumberOfFailure(u"HY000", code, text, true);
  };
  EXPECT_EQ(number(1, u"no such table: T"), ErrorNumber::TableNotFound);
  EXPECT_EQ(number(1, u"near \"x\": syntax error"), ErrorNumber::SyntaxOrPermission);
  EXPECT_EQ(number(5, u"database is locked"), ErrorNumber::TimedOut);
  EXPECT_EQ(number(9, u"interrupted"), ErrorNumber::CommandCancelled);
  EXPECT_EQ(number(19, u"UNIQUE constraint failed"), ErrorNumber::IntegrityViolation);
  EXPECT_EQ(number(2067, u"UNIQUE constraint failed"), ErrorNumber::IntegrityViolation);
  EXPECT_EQ(number(26, u"file is not a database"), ErrorNumber::DriverFailure);
}

TEST(ErrorMapping, CodesOfOtherEnginesSayNothing) {
  EXPECT_EQ(NumberOfFailure(u"HY000", 1, u"no such table", false), ErrorNumber::DriverFailure);
  EXPECT_EQ(NumberOfFailure(u"HY000", 1020, u"ORA-01020: unknown context area state", false),
            ErrorNumber::DriverFailure);
}

TEST(ErrorMapping, KnowsARowThatChangedSinceTheTransactionBegan) {
  EXPECT_EQ(
      NumberOfFailure(u"HY000", 1020,
                      u"[ma-3.1.15][11.8.9-MariaDB]Record has changed since last read", false),
      ErrorNumber::RowChanged);
}

}  // namespace
}  // namespace ktrv::database::odbc
