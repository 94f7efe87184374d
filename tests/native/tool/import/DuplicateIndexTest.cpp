#include "tool/import/DuplicateIndex.h"

#include <gtest/gtest.h>

namespace ktrv::tool {
namespace {

using Person = DuplicateIndex::Person;

TEST(DuplicateIndexTest, FindsANumberHoweverWritten) {
  DuplicateIndex people;
  EXPECT_EQ(people.Add({.CountryCode = u"46", .MobileNo = u"701 740"}, 7), 0U);
  for (const StringView number : {u"46701740", u"+46 (0)701-740", u"0046701740"}) {
    EXPECT_EQ(people.Find({.MobileNo = number}), 0U) << ToUtf8(number);
  }
  EXPECT_EQ(people.Find({.CountryCode = u"+46", .MobileNo = u"701740"}), 0U);
  EXPECT_EQ(people.Find({.MobileNo = u"701740"}), std::nullopt);
  EXPECT_EQ(people.IdOf(0), 7);
}

TEST(DuplicateIndexTest, FindsNameAndEmailTogetherOnly) {
  DuplicateIndex people;
  people.Add({.FirstName = u"Anna", .LastName = u"Ek", .MobileNo = u"1", .Email = u"a@ek.se"});
  EXPECT_EQ(people.Find(
                {.FirstName = u"ANNA ", .LastName = u"ek", .MobileNo = u"2", .Email = u"A@ek.se"}),
            0U);
  EXPECT_EQ(people.Find({.FirstName = u"Anna", .LastName = u"Ek", .MobileNo = u"2"}), std::nullopt);
  EXPECT_EQ(people.Find({.FirstName = u"Bert", .LastName = u"Ek", .Email = u"a@ek.se"}),
            std::nullopt);
}

TEST(DuplicateIndexTest, KnowsNothingOfPeopleWithoutNumberAndEmail) {
  DuplicateIndex people;
  people.Add({.FirstName = u"Anna"});
  people.Add({.FirstName = u"Anna", .MobileNo = u"000"});
  EXPECT_EQ(people.Find({.FirstName = u"Anna"}), std::nullopt);
  EXPECT_EQ(people.Find({.FirstName = u"Anna", .MobileNo = u"0"}), std::nullopt);
}

TEST(DuplicateIndexTest, TheFirstPersonOfANumberIsFoundUntilItIsRemoved) {
  DuplicateIndex people;
  const std::size_t first = people.Add({.MobileNo = u"1"});
  people.Add({.MobileNo = u"1"});
  EXPECT_EQ(people.Find({.MobileNo = u"1"}), first);
  people.Remove(first);
  EXPECT_EQ(people.Find({.MobileNo = u"1"}), std::nullopt);
  const std::size_t third = people.Add({.MobileNo = u"1"});
  EXPECT_EQ(people.Find({.MobileNo = u"1"}), third);
}

}  // namespace
}  // namespace ktrv::tool
