#include "controls/CaseFolding.h"

#include <gtest/gtest.h>

#include "tests/native/support/UserLanguage.h"

namespace ktrv::controls {
namespace {

struct CaseFoldingTest : testing::Test {
  CaseFolding folding{*tests::MakeUserLanguage()};
};

TEST_F(CaseFoldingTest, LettersBecomeCapitalsAccentedOnesToo) {
  EXPECT_EQ(folding.Folded(u"aZ9é\u0434"), u"AZ9É\u0414");
}

TEST_F(CaseFoldingTest, APrefixIsFoundRegardlessOfCase) {
  EXPECT_TRUE(folding.StartsWith(u"Émile", u"ÉM"));
  EXPECT_FALSE(folding.StartsWith(u"Emile", u"ÉM"));
  EXPECT_FALSE(folding.StartsWith(u"É", u"ÉM"));
  EXPECT_TRUE(folding.StartsWith(u"anything", u""));
}

TEST_F(CaseFoldingTest, SurrogatesStayWhatTheyAre) {
  EXPECT_EQ(folding.Folded(u"\U0001F600"), u"\U0001F600");
  EXPECT_EQ(folding.Folded(String(1, 0xDBFF)), String(1, 0xDBFF));
}

}  // namespace
}  // namespace ktrv::controls
