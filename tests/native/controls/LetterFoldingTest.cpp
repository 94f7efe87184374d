#include "controls/LetterFolding.h"

#include <gtest/gtest.h>

#include "tests/native/support/UserLanguage.h"

namespace ktrv::controls {
namespace {

struct LetterFoldingTest : testing::Test {
  LetterFolding folding{*tests::MakeUserLanguage()};
};

TEST_F(LetterFoldingTest, LettersBecomeCapitalsWithoutAccents) {
  EXPECT_EQ(folding.Folded(u"Zoë Åström"), u"ZOE ASTROM");
  EXPECT_EQ(folding.Folded(u"øystein"), u"OYSTEIN");
  EXPECT_EQ(folding.Folded(u"\u03AC"), folding.Folded(u"\u0391"));
  EXPECT_EQ(folding.Folded(u"\u0439"), folding.Folded(u"\u0419"));
}

TEST_F(LetterFoldingTest, AnAccentOfItsOwnIsLeftOut) {
  EXPECT_EQ(folding.Folded(u"Zoe\u0308"), u"ZOE");
}

TEST_F(LetterFoldingTest, OtherLettersOfTheUsersLanguageStayApart) {
  const LetterFolding swedish(*tests::MakeUserLanguage("sv"));
  EXPECT_NE(swedish.Folded(u"Å"), swedish.Folded(u"A"));
  EXPECT_NE(swedish.Folded(u"ö"), swedish.Folded(u"o"));
  EXPECT_EQ(swedish.Folded(u"å"), swedish.Folded(u"Å"));
  EXPECT_EQ(swedish.Folded(u"é"), swedish.Folded(u"E"));
}

TEST_F(LetterFoldingTest, WordsAreSeparatedBySingleBlanks) {
  EXPECT_EQ(folding.Folded(u"  zoe \t ek "), u"ZOE EK");
  EXPECT_EQ(folding.Folded(u"O'Brien-Ek, (x)"), u"O BRIEN EK X");
  EXPECT_EQ(folding.Folded(u" -, "), u"");
  EXPECT_EQ(folding.Folded(u""), u"");
}

TEST_F(LetterFoldingTest, LettersWithoutCaseStay) {
  EXPECT_EQ(folding.Folded(u"\u0905\u092E\u0930"), u"\u0905\u092E\u0930");
  EXPECT_EQ(folding.Folded(u"\u05D0\u200F"), u"\u05D0");
  EXPECT_EQ(folding.Folded(u"\U0001F600"), u"\U0001F600");
  EXPECT_EQ(folding.Folded(String(1, 0xDBFF)), String(1, 0xDBFF));
}

}  // namespace
}  // namespace ktrv::controls
