#include "controls/SoughtNumber.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace ktrv::controls
