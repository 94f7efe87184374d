#include "common/TextCollection.h"

#include <functional>
#include <gtest/gtest.h>

#include "common/Error.h"

namespace ktrv {
namespace {

std::int32_t FailureOf(const std::function<void()>& work) {
  try {
    work();
  } catch (const Error& error) {
    return error.Number();
  }
  return 0;
}

TEST(TextCollectionTest, GivesItsTextsByNumberFromOne) {
  TextCollection texts;
  texts.Add(u"a");
  texts.Add(u"b");
  EXPECT_EQ(texts.Count(), 2);
  EXPECT_EQ(texts.Item(1), u"a");
  EXPECT_EQ(texts.Item(2), u"b");
}

TEST(TextCollectionTest, GivesTextsByKeyWhateverItsCase) {
  TextCollection texts;
  texts.Add(u"none");
  texts.Add(u"a", u"M1");
  texts.Add(u"", u"m2");
  EXPECT_EQ(texts.Item(u"m1"), u"a");
  EXPECT_EQ(texts.Item(u"M2"), u"");
}

TEST(TextCollectionTest, ANumberThatIsNotThereIsASubscriptOutOfRange) {
  TextCollection texts;
  texts.Add(u"a");
  EXPECT_EQ(FailureOf([&] { texts.Item(0); }), 9);
  EXPECT_EQ(FailureOf([&] { texts.Item(2); }), 9);
}

TEST(TextCollectionTest, AKeyThatIsNotThereIsAnInvalidArgument) {
  TextCollection texts;
  texts.Add(u"a", u"M1");
  EXPECT_EQ(FailureOf([&] { texts.Item(u"M2"); }), 5);
  EXPECT_EQ(FailureOf([&] { texts.Item(u""); }), 5);
}

TEST(TextCollectionTest, RefusesAKeyTwiceAndStaysAsItWas) {
  TextCollection texts;
  texts.Add(u"a", u"M1");
  EXPECT_EQ(FailureOf([&] { texts.Add(u"b", u"m1"); }), 457);
  EXPECT_EQ(texts.Count(), 1);
  EXPECT_EQ(texts.Item(u"M1"), u"a");
}

TEST(TextCollectionTest, TakesOneTextManyTimes) {
  TextCollection texts;
  texts.Add(u"a");
  texts.Add(u"a");
  EXPECT_EQ(texts.Count(), 2);
}

}  // namespace
}  // namespace ktrv
