#include "controls/SortKeys.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>
#include <random>

#include "tests/native/support/UserLanguage.h"

namespace ktrv::controls {
namespace {

/// Many texts of which many are equal, or equal in their first letters.
std::vector<String> Texts(std::size_t count) {
  std::mt19937 random(17);
  std::vector<String> texts;
  for (std::size_t i = 0; i < count; ++i) {
    texts.push_back(u"Contact " + ToDecimal(static_cast<std::int64_t>(random() % (count / 3 + 1))));
  }
  return texts;
}

TEST(SortKeysTest, ManyTextsAreSortedAsAFewAre) {
  const auto language = tests::MakeUserLanguage();
  for (const std::size_t count : {0U, 1U, 2047U, 2048U, 2049U, 4097U, 30000U}) {
    const std::vector<String> texts = Texts(count);
    std::vector<std::string> bytes(count);
    for (std::size_t i = 0; i < count; ++i) language->AppendSortKey(texts[i], bytes[i]);
    for (const bool ascending : {true, false}) {
      SortKeys keys(*language, count, ascending);
      for (const String& text : texts) keys.Add(text);
      while (keys.SortOn()) {
      }
      std::vector<std::uint32_t> expected(count);
      std::iota(expected.begin(), expected.end(), 0U);
      std::stable_sort(expected.begin(), expected.end(), [&](auto left, auto right) {
        return ascending ? bytes[left] < bytes[right] : bytes[right] < bytes[left];
      });
      EXPECT_EQ(keys.Order(), expected) << count;
    }
  }
}

}  // namespace
}  // namespace ktrv::controls
