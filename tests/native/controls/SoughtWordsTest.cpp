#include "controls/SoughtWords.h"

#include <gtest/gtest.h>

#include "controls/LetterFolding.h"
#include "tests/native/support/UserLanguage.h"

namespace ktrv::controls {
namespace {

struct SoughtWordsTest : testing::Test {
  bool Begins(StringView typed, StringView name) { return SoughtWords(typed, folding).Begin(name); }
  bool Matches(StringView typed, StringView name) {
    return SoughtWords(typed, folding).StartWordsOf(name);
  }

  LetterFolding folding{*tests::MakeUserLanguage()};
};

TEST_F(SoughtWordsTest, ANameBeginsWithItsStart) {
  EXPECT_TRUE(Begins(u"zo", u"Zoë Ek"));
  EXPECT_TRUE(Begins(u"Zoe E", u"Zoë  Ek"));
  EXPECT_TRUE(Begins(u" zoë  ek ", u"zoe ek"));
  EXPECT_FALSE(Begins(u"ek", u"Zoe Ek"));
  EXPECT_FALSE(Begins(u"zoe eks", u"Zoe Ek"));
  EXPECT_FALSE(Begins(u"zo ek", u"Zoe Ek"));
}

TEST_F(SoughtWordsTest, AnyWordOfANameIsFoundByItsStart) {
  EXPECT_TRUE(Matches(u"ek", u"Zoe Ek"));
  EXPECT_TRUE(Matches(u"bri", u"Pat O'Brien"));
  EXPECT_TRUE(Matches(u"lud", u"Ada M\u00FCller-L\u00FCdenscheidt"));
  EXPECT_FALSE(Matches(u"oe", u"Zoe Ek"));
}

TEST_F(SoughtWordsTest, SeveralWordsAreFoundInAnyOrder) {
  EXPECT_TRUE(Matches(u"ek zo", u"Zoe Ek"));
  EXPECT_TRUE(Matches(u"zo e", u"Zoe Maria Ek"));
  EXPECT_FALSE(Matches(u"zo x", u"Zoe Ek"));
}

TEST_F(SoughtWordsTest, EachTypedWordNeedsAWordOfItsOwn) {
  EXPECT_FALSE(Matches(u"ann a", u"Anna Berg"));
  EXPECT_TRUE(Matches(u"a ann", u"Anna Alm"));
  EXPECT_FALSE(Matches(u"e e", u"Zoe Ek"));
}

TEST_F(SoughtWordsTest, AnEmptyTextMatchesNothing) {
  for (const StringView typed : {u"", u"  ", u"-"}) {
    EXPECT_TRUE(SoughtWords(typed, folding).IsEmpty());
    EXPECT_FALSE(Begins(typed, u"Zoe"));
    EXPECT_FALSE(Matches(typed, u"Zoe"));
  }
  EXPECT_FALSE(Matches(u"z", u""));
}

}  // namespace
}  // namespace ktrv::controls
