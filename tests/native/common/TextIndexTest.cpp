#include "common/TextIndex.h"

#include <gtest/gtest.h>

namespace ktrv {
namespace {

TEST(TextIndex, NumbersTextsInTheirOrder) {
  TextIndex index;
  EXPECT_TRUE(index.Add(u"b"));
  EXPECT_TRUE(index.Add(u"a"));
  EXPECT_EQ(index.Find(u"b"), 0U);
  EXPECT_EQ(index.Find(u"a"), 1U);
}

TEST(TextIndex, KnowsNothingAtFirst) {
  EXPECT_FALSE(TextIndex().Contains(u""));
  EXPECT_EQ(TextIndex().Count(), 0U);
}

TEST(TextIndex, FindsATextWhateverTheGuess) {
  TextIndex index;
  index.Add(u"a");
  index.Add(u"b");
  EXPECT_EQ(index.Find(u"b", 1), 1U);
  EXPECT_EQ(index.Find(u"b", 0), 1U);
  EXPECT_EQ(index.Find(u"a", 7), 0U);
  EXPECT_FALSE(index.Find(u"c", 1));
}

TEST(TextIndex, TakesATextOnce) {
  TextIndex index;
  index.Add(u"a");
  EXPECT_FALSE(index.Add(u"a"));
  EXPECT_EQ(index.Count(), 1U);
}

TEST(TextIndex, TellsTextsThatBeginAlikeApart) {
  TextIndex index;
  index.Add(u"1");
  index.Add(u"12");
  EXPECT_EQ(index.Find(u"12"), 1U);
  EXPECT_FALSE(index.Contains(u"2"));
  EXPECT_FALSE(index.Contains(u"112"));
}

TEST(TextIndex, TakesAnEmptyText) {
  TextIndex index;
  EXPECT_TRUE(index.Add(u""));
  EXPECT_EQ(index.Find(u""), 0U);
  EXPECT_FALSE(index.Add(u""));
}

TEST(TextIndex, KeepsItsTextsWhileItGrows) {
  TextIndex index;
  for (int number = 0; number < 5000; ++number) ASSERT_TRUE(index.Add(ToDecimal(number)));
  for (int number = 0; number < 5000; ++number) {
    ASSERT_EQ(index.Find(ToDecimal(number)), static_cast<std::size_t>(number));
  }
  EXPECT_FALSE(index.Contains(u"5000"));
}

TEST(TextIndex, ForgetsWhenCleared) {
  TextIndex index;
  index.Add(u"a");
  index.Clear();
  EXPECT_FALSE(index.Contains(u"a"));
  EXPECT_TRUE(index.Add(u"b"));
  EXPECT_EQ(index.Find(u"b"), 0U);
}

}  // namespace
}  // namespace ktrv
