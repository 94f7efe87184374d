#include "database/odbc/IntegerForm.h"

#include <gtest/gtest.h>

namespace ktrv::database::odbc {
namespace {

constexpr std::int64_t kTwoTo31 = std::int64_t{1} << 31;
constexpr IntegerForm kFourBytes{SQL_C_SLONG, SQL_INTEGER, 10};
constexpr IntegerForm kEightBytes{SQL_C_SBIGINT, SQL_BIGINT, 19};

TEST(IntegerForm, NumberOfFourBytesGoesAsOne) {
  for (const std::int64_t number :
       {std::int64_t{0}, std::int64_t{5}, std::int64_t{-5}, kTwoTo31 - 1, -kTwoTo31}) {
    EXPECT_EQ(IntegerForm::Of(number), kFourBytes) << number;
  }
}

TEST(IntegerForm, GreaterNumberKeepsItsEightBytes) {
  for (const std::int64_t number : {kTwoTo31, -kTwoTo31 - 1, std::int64_t{1} << 40}) {
    EXPECT_EQ(IntegerForm::Of(number), kEightBytes) << number;
  }
}

}  // namespace
}  // namespace ktrv::database::odbc
