#include "common/Error.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace ktrv::tests {
namespace {

template <class Thrown>
Error Caught(Thrown thrown) {
  try {
    throw thrown;
  } catch (...) {
    return Error::Current();
  }
}

TEST(Error, KeepsWhatItWasMadeOf) {
  const Error error(3021, u"No current record \u00E9", u"ODBC", 87);
  EXPECT_EQ(error.Number(), 3021);
  EXPECT_EQ(error.Description(), u"No current record \u00E9");
  EXPECT_EQ(error.Source(), u"ODBC");
  EXPECT_EQ(error.LastSystemError(), 87U);
  EXPECT_STREQ(error.what(), "No current record \xC3\xA9");
}

TEST(Error, ANumberAloneHasItsUsualText) {
  const std::pair<std::int32_t, StringView> kTexts[] = {
      {5, u"Invalid procedure call or argument"},
      {6, u"Overflow"},
      {7, u"Out of memory"},
      {9, u"Subscript out of range"},
      {13, u"Type mismatch"},
      {51, u"Internal error"},
      {91, u"Object variable or With block variable not set"},
      {94, u"Invalid use of Null"},
      {380, u"Invalid property value"},
      {35601, u"Element not found"},
  };
  for (const auto& [number, text] : kTexts) {
    EXPECT_EQ(Error(number).Number(), number);
    EXPECT_EQ(Error(number).Description(), text);
    EXPECT_EQ(Error(number).Source(), u"KTRVAddressBook");
  }
}

TEST(Error, IsCopiedWithoutNeedingMemory) {
  EXPECT_TRUE(std::is_nothrow_copy_constructible_v<Error>);
}

TEST(Error, TheCurrentOneIsTheOneThatWasThrown) {
  const Error error = Caught(Error(91, u"not set", u"form", 5));
  EXPECT_EQ(error.Number(), 91);
  EXPECT_EQ(error.Description(), u"not set");
  EXPECT_EQ(error.Source(), u"form");
  EXPECT_EQ(error.LastSystemError(), 5U);
}

TEST(Error, TheCurrentOneDescribesWhateverWasThrown) {
  EXPECT_EQ(Caught(std::bad_alloc()).Number(), ErrorNumber::OutOfMemory);
  EXPECT_EQ(Caught(std::out_of_range("too far")).Description(), u"too far");
  EXPECT_EQ(Caught(42).Number(), ErrorNumber::InternalError);
}

}  // namespace
}  // namespace ktrv::tests
