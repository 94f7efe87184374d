#include "common/Global.h"

#include <gmock/gmock.h>

#include "tests/native/common/RecordingSystem.h"

namespace ktrv::tests {
namespace {

constexpr StringView kLogPath = u"AddressBook.log";

struct EmailCase {
  const char16_t* Address;
  bool Valid;
  const char* Why;
};

struct ValidateEmailTest : testing::TestWithParam<EmailCase> {
  RecordingSystem System;
  Logger Log{System, nullptr};
};

TEST_P(ValidateEmailTest, JudgesTheAddress) {
  EXPECT_EQ(Global::ValidateEmail(Log, kLogPath, GetParam().Address), GetParam().Valid)
      << GetParam().Why;
  EXPECT_TRUE(System.Appends.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Addresses, ValidateEmailTest,
    testing::Values(
        EmailCase{u"a@b.c", true, "the shortest"}, EmailCase{u"a@@b.c", false, "two at-signs"},
        EmailCase{u"a@b@c.d", false, "two at-signs apart"},
        EmailCase{u"@a.b", false, "at-sign first"}, EmailCase{u"a@b.", false, "point last"},
        EmailCase{u".a@b.c", true, "a point first is let through"},
        EmailCase{u"ab.c@", true, "an at-sign last is let through"},
        EmailCase{u"a@.bc", false, "at-sign and point"},
        EmailCase{u"a.@bc", false, "point and at-sign"},
        EmailCase{u"a..b@c.d", false, "two points in a row"},
        EmailCase{u"a@b..c", false, "two points in a row behind the at-sign"},
        EmailCase{u"abcdefgh..@x.y", false, "two points at position 9"},
        EmailCase{u"abcdefghi..@x.y", true, "two points at position 10 are not seen"},
        EmailCase{u"abcdefg@ij..", false, "two points at the end, point last"},
        EmailCase{u"a.b@c..d", true, "only the first point is looked at"},
        EmailCase{u"a.b@.c", false, "the only at-sign is followed by a point"},
        EmailCase{u"a.b.@c", true, "a later point before the at-sign is not looked at"},
        EmailCase{u"abc", false, "neither"}, EmailCase{u"a@bc", false, "no point"},
        EmailCase{u"a.bc", false, "no at-sign"}, EmailCase{u"", false, "empty"},
        EmailCase{u"@", false, "only an at-sign"}, EmailCase{u".", false, "only a point"},
        EmailCase{u"@.", false, "only both"}, EmailCase{u".@", false, "both the other way"},
        EmailCase{u" @ . ", true, "blanks are characters like others"}));

TEST_F(ValidateEmailTest, TheLongestAddressThatCanBeCountedIsJudged) {
  EXPECT_TRUE(Global::ValidateEmail(Log, kLogPath, u"a@b.c" + String(32762, u'd')));
}

TEST_F(ValidateEmailTest, OneCharacterMoreIsATrappedOverflow) {
  EXPECT_FALSE(Global::ValidateEmail(Log, kLogPath, u"a@b.c" + String(32763, u'd')));
  EXPECT_THAT(
      System.Contents(),
      testing::AllOf(testing::HasSubstr(
                         "KTRVAddressBook: Error occurred. Sub: ValidateEmail, Module: Global\r\n"),
                     testing::HasSubstr("Error Number      : 6\r\n")));
}

bool Accepts(std::int16_t code, bool refusePoint = true, bool refuseSemicolon = true) {
  return Global::KeyFilterNumeric(code, refusePoint, refuseSemicolon,
                                  []() -> std::optional<String> {
                                    ADD_FAILURE() << "the clipboard is no business of this key";
                                    return {};
                                  });
}

bool AcceptsPaste(std::optional<String> clipboard) {
  return Global::KeyFilterNumeric(22, true, true, [&] { return clipboard; });
}

TEST(KeyFilterNumeric, AcceptsTheDigitsAndNothingBesideThem) {
  for (char16_t digit = u'0'; digit <= u'9'; ++digit) {
    EXPECT_TRUE(Accepts(static_cast<std::int16_t>(digit)));
  }
  EXPECT_FALSE(Accepts(u'/'));
  EXPECT_FALSE(Accepts(u':'));
}

TEST(KeyFilterNumeric, AcceptsBackspaceTabAndCopy) {
  EXPECT_TRUE(Accepts(8));
  EXPECT_TRUE(Accepts(9));
  EXPECT_TRUE(Accepts(3));
}

TEST(KeyFilterNumeric, RefusesLettersSignsAndOtherControls) {
  for (const int code : {0, 1, 13, 24, 26, 27, 32, 43, 44, 45, 65, 97, 127, 0x661, -1}) {
    EXPECT_FALSE(Accepts(static_cast<std::int16_t>(code))) << code;
  }
}

TEST(KeyFilterNumeric, TheFirstFlagRefusesThePoint) {
  EXPECT_FALSE(Accepts(46, true, false));
  EXPECT_TRUE(Accepts(46, false, true));
}

TEST(KeyFilterNumeric, TheSecondFlagRefusesTheSemicolon) {
  EXPECT_FALSE(Accepts(59, false, true));
  EXPECT_TRUE(Accepts(59, true, false));
}

TEST(KeyFilterNumeric, PastesANumberOfZeroOrMore) {
  EXPECT_TRUE(AcceptsPaste(u"12"));
  EXPECT_TRUE(AcceptsPaste(u"0"));
  EXPECT_TRUE(AcceptsPaste(u" 9876543210 "));
  EXPECT_TRUE(AcceptsPaste(u"+12.5"));
}

TEST(KeyFilterNumeric, PastesANumberWithItsLineEnd) {
  EXPECT_EQ(Global::PastedNumber(u" 12\t\r\n"), u"12");
  EXPECT_EQ(Global::PastedNumber(u"1\r\n2"), std::nullopt);
  EXPECT_EQ(Global::PastedNumber(u" \r\n"), std::nullopt);
  EXPECT_EQ(Global::PastedNumber(u""), std::nullopt);
}

TEST(KeyFilterNumeric, RefusesToPasteAnythingElse) {
  EXPECT_FALSE(AcceptsPaste(u"-5"));
  EXPECT_FALSE(AcceptsPaste(u"12a"));
  EXPECT_FALSE(AcceptsPaste(u""));
  EXPECT_FALSE(AcceptsPaste(u"1;2"));
  EXPECT_FALSE(AcceptsPaste(u"nan"));
  EXPECT_FALSE(AcceptsPaste(u"inf"));
  EXPECT_FALSE(AcceptsPaste(std::nullopt));
}

TEST(NullToDefault, GivesTheDefaultTextForNull) {
  EXPECT_EQ(Global::NullToDefault(Null{}, u"none"), Variant(String(u"none")));
}

TEST(NullToDefault, LeavesEveryOtherValueAsItIs) {
  EXPECT_EQ(Global::NullToDefault(String(), u"none"), Variant(String()));
  EXPECT_EQ(Global::NullToDefault(std::int64_t{0}, u"none"), Variant(std::int64_t{0}));
  EXPECT_EQ(Global::NullToDefault(false, u"none"), Variant(false));
}

}  // namespace
}  // namespace ktrv::tests
