#include "controls/SoughtNumber.h"

#include <gtest/gtest.h>
#include <set>

namespace ktrv::controls {
namespace {

bool Finds(StringView typed, StringView number) {
  return SoughtNumber(typed).IsIn(number);
}

TEST(SoughtNumberTest, DigitsAreFoundHoweverANumberIsWritten) {
  EXPECT_TRUE(Finds(u"98200", u"+91 982-00"));
  EXPECT_TRUE(Finds(u"+91 (98) 2", u"91 98200"));
  EXPECT_TRUE(Finds(u"200", u"91 98200"));
  EXPECT_FALSE(Finds(u"98201", u"91 98200"));
}

TEST(SoughtNumberTest, ZerosBeforeTheNumberDoNotMatter) {
  EXPECT_TRUE(Finds(u"030 12", u"+49 30 12"));
  EXPECT_TRUE(Finds(u"0049 30 12", u"+49 (0)30 12"));
  EXPECT_TRUE(Finds(u"+49 (0) 30 12", u"49 3012"));
  EXPECT_TRUE(Finds(u"00", u"1005"));
  EXPECT_FALSE(Finds(u"00", u"15"));
}

TEST(SoughtNumberTest, OtherTextsAreNoNumbers) {
  for (const StringView typed : {u"", u"+", u"3M", u"zoe", u"12x"}) {
    EXPECT_TRUE(SoughtNumber(typed).IsEmpty());
    EXPECT_FALSE(Finds(typed, u"12"));
  }
}

TEST(SoughtNumberTest, NumberOfUpTo18DigitsIsItsOwnKey) {
  EXPECT_EQ(SoughtNumber::KeyOf(u""), 0U);
  EXPECT_EQ(SoughtNumber::KeyOf(u"1"), 1U);
  EXPECT_EQ(SoughtNumber::KeyOf(u"491701023652"), 491701023652U);
  EXPECT_EQ(SoughtNumber::KeyOf(u"999999999999999999"), 999999999999999999U);
}

TEST(SoughtNumberTest, LongerNumberIsHashedInto64BitsEverywhere) {
  constexpr std::uint64_t kHighest = std::uint64_t{1} << 63;
  EXPECT_EQ(SoughtNumber::KeyOf(u"1000000000000000000"), 0x81D17C2C697B9FD3);
  std::set<std::uint64_t> keys;
  for (const StringView number : {u"1234567890123456781", u"1234567890123456790",
                                  u"12345678901234567890", u"12345678901234567809"}) {
    keys.insert(SoughtNumber::KeyOf(number));
  }
  EXPECT_EQ(keys.size(), 4U);
  EXPECT_GE(*keys.begin(), kHighest);
}

}  // namespace
}  // namespace ktrv::controls
