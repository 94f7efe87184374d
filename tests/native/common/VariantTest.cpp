#include "common/Variant.h"

#include <gtest/gtest.h>

#include "common/Error.h"

namespace ktrv::tests {
namespace {

std::int32_t FailureOf(const Variant& value) {
  try {
    ToInteger(value);
  } catch (const Error& error) {
    return error.Number();
  }
  return 0;
}

TEST(VariantText, OfEachKind) {
  EXPECT_EQ(ToText(Null{}), u"");
  EXPECT_EQ(ToText(std::int64_t{-7}), u"-7");
  EXPECT_EQ(ToText(1.5), u"1.5");
  EXPECT_EQ(ToText(true), u"True");
  EXPECT_EQ(ToText(false), u"False");
  EXPECT_EQ(ToText(String(u" x ")), u" x ");
}

TEST(VariantText, OfANumberOfUsualSizeIsDecimal) {
  EXPECT_EQ(ToText(100000.0), u"100000");
  EXPECT_EQ(ToText(200000.0), u"200000");
  EXPECT_EQ(ToText(1e6), u"1000000");
  EXPECT_EQ(ToText(-1e5), u"-100000");
  EXPECT_EQ(ToText(123456.5), u"123456.5");
  EXPECT_EQ(ToText(999999999999999.0), u"999999999999999");
  EXPECT_EQ(ToText(0.0), u"0");
  EXPECT_EQ(ToText(0.1), u"0.1");
  EXPECT_EQ(ToText(-0.0001), u"-0.0001");
}

TEST(VariantText, OfAHugeOrTinyNumberHasAnExponent) {
  EXPECT_EQ(ToText(1e15), u"1e+15");
  EXPECT_EQ(ToText(1e20), u"1e+20");
  EXPECT_EQ(ToText(-1e300), u"-1e+300");
  EXPECT_EQ(ToText(1e-10), u"1e-10");
}

TEST(VariantText, OfAFractionOfFourBytesHasNoMoreDigitsThanItMeans) {
  EXPECT_EQ(NumberText(0.1F), u"0.1");
  EXPECT_EQ(NumberText(100000.0F), u"100000");
}

TEST(VariantText, OfADateHasATimeOnlyWhenItIsNotMidnight) {
  EXPECT_EQ(ToText(*ParseDateTime(u"2001-02-03")), u"2001-02-03");
  EXPECT_EQ(ToText(*ParseDateTime(u"2001-02-03T04:05:06")), u"2001-02-03 04:05:06");
}

TEST(VariantInteger, RoundsHalfToEven) {
  EXPECT_EQ(ToInteger(2.5), 2);
  EXPECT_EQ(ToInteger(3.5), 4);
  EXPECT_EQ(ToInteger(-2.5), -2);
}

TEST(VariantInteger, ReadsATextThatIsANumber) {
  EXPECT_EQ(ToInteger(String(u" 12 ")), 12);
  EXPECT_EQ(ToInteger(String(u"12.4")), 12);
}

TEST(VariantInteger, RefusesWhatIsNoNumber) {
  EXPECT_EQ(FailureOf(Null{}), ErrorNumber::InvalidUseOfNull);
  EXPECT_EQ(FailureOf(String(u"x")), ErrorNumber::TypeMismatch);
  EXPECT_EQ(FailureOf(*ParseDateTime(u"2001-02-03")), ErrorNumber::TypeMismatch);
  EXPECT_EQ(FailureOf(1e30), ErrorNumber::Overflow);
}

TEST(ParseDateTime, RefusesDaysThatAreNone) {
  EXPECT_TRUE(ParseDateTime(u"2024-02-29"));
  for (const StringView text :
       {u"2023-02-29", u"2024-13-01", u"2024-00-01", u"0000-01-01", u"2024-1-1", u"2024-01-01 ",
        u"2024-01-01 24:00:00", u"2024-01-01 10:60:00", u"2024-01-01 10:00:00.x", u"", u"today"}) {
    EXPECT_FALSE(ParseDateTime(text)) << ToUtf8(text);
  }
}

TEST(ParseDateTime, KeepsMilliseconds) {
  const auto moment = ParseDateTime(u"2024-01-01 10:20:30.125");
  ASSERT_TRUE(moment);
  EXPECT_EQ(moment->time_since_epoch().count() % 1000, 125);
}

}  // namespace
}  // namespace ktrv::tests
