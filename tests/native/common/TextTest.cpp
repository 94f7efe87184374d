#include "common/Text.h"

#include <gtest/gtest.h>
#include <limits>

namespace ktrv::tests {
namespace {

TEST(Trim, TakesBlanksOffBothEnds) {
  EXPECT_EQ(Trim(u"  a b "), u"a b");
}

TEST(Trim, LeavesOtherWhiteSpace) {
  EXPECT_EQ(Trim(u" \ta\u00A0 "), u"\ta\u00A0");
}

TEST(Trim, OfBlanksIsEmpty) {
  EXPECT_EQ(Trim(u"   "), u"");
  EXPECT_EQ(Trim(u""), u"");
}

TEST(LTrim, LeavesTheEnd) {
  EXPECT_EQ(LTrim(u"  a "), u"a ");
}

TEST(EqualsIgnoringCase, FoldsOnlyTheLettersAToZ) {
  EXPECT_TRUE(EqualsIgnoringCase(u"oracle_1", u"ORACLE_1"));
  EXPECT_FALSE(EqualsIgnoringCase(u"\u00E9", u"\u00C9"));
  EXPECT_FALSE(EqualsIgnoringCase(u"a", u"ab"));
  EXPECT_FALSE(EqualsIgnoringCase(u"@", u"`"));
}

TEST(ToUpperAscii, LeavesWhatIsNoLetterAToZ) {
  EXPECT_EQ(ToUpperAscii(u"sfld12{\u00E9"), u"SFLD12{\u00E9");
}

TEST(ToDecimal, WritesTheWholeRange) {
  EXPECT_EQ(ToDecimal(0), u"0");
  EXPECT_EQ(ToDecimal(std::numeric_limits<std::int64_t>::min()), u"-9223372036854775808");
}

TEST(IsDecimalDigits, IsTheOnlyFormOfAnId) {
  EXPECT_TRUE(IsDecimalDigits(u"0042"));
  for (const StringView text : {u"", u"-1", u"+1", u"1 ", u"1;", u"1.0", u"\u0661", u"x"}) {
    EXPECT_FALSE(IsDecimalDigits(text));
  }
}

TEST(ParseInteger, TakesASignAndTheWholeText) {
  EXPECT_EQ(ParseInteger(u"-12"), -12);
  EXPECT_EQ(ParseInteger(u"+12"), 12);
  EXPECT_EQ(ParseInteger(u"12 "), std::nullopt);
  EXPECT_EQ(ParseInteger(u"+-12"), std::nullopt);
  EXPECT_EQ(ParseInteger(u"12\u00E9"), std::nullopt);
  EXPECT_EQ(ParseInteger(u""), std::nullopt);
  EXPECT_EQ(ParseInteger(u"9223372036854775808"), std::nullopt);
}

TEST(ParseNumber, TakesFractionsAndNothingElse) {
  EXPECT_EQ(ParseNumber(u"1.5"), 1.5);
  EXPECT_EQ(ParseNumber(u"+.5"), 0.5);
  EXPECT_EQ(ParseNumber(u"1,5"), std::nullopt);
  EXPECT_EQ(ParseNumber(u"1e999"), std::nullopt);
}

TEST(LeadingNumber, StopsAtTheFirstOtherCharacter) {
  EXPECT_EQ(LeadingNumber(u"  12 rupees"), 12);
  EXPECT_EQ(LeadingNumber(u"-3x"), -3);
  EXPECT_EQ(LeadingNumber(u"x3"), 0);
  EXPECT_EQ(LeadingNumber(u""), 0);
}

TEST(Utf8, KeepsEveryPlane) {
  const String text = u"a\u00E9\u0930\U0001F4D2\uFFFF";
  EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
}

TEST(Utf8, ReplacesASurrogateWithoutItsPartner) {
  EXPECT_EQ(ToUtf8(String{0xD83D, u'x'}), "\xEF\xBF\xBDx");
  EXPECT_EQ(ToUtf8(String{0xDC00}), "\xEF\xBF\xBD");
}

TEST(Utf8, ReplacesEachByteThatBelongsToNoSequence) {
  EXPECT_EQ(FromUtf8("a\xC3"), u"a\uFFFD");
  EXPECT_EQ(FromUtf8("\xC0\x80"), u"\uFFFD\uFFFD");            // overlong
  EXPECT_EQ(FromUtf8("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");  // surrogate
  EXPECT_EQ(FromUtf8("\xF5\x80"), u"\uFFFD\uFFFD");            // beyond the last plane
}

}  // namespace
}  // namespace ktrv::tests
