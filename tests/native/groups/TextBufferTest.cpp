#include "forms/groups/TextBuffer.h"

#include <gtest/gtest.h>

namespace ktrv::forms {
namespace {

TEST(TextBuffer, JoinsItsPieces) {
  TextBuffer buffer;
  buffer.Append(u"Anna;");
  buffer.Append(u"Bert;");
  EXPECT_EQ(buffer.Text(), u"Anna;Bert;");
  EXPECT_EQ(buffer.Used(), 10U);
}

TEST(TextBuffer, IsEmptyAtFirst) {
  EXPECT_EQ(TextBuffer().Text(), u"");
  EXPECT_EQ(TextBuffer().Capacity(), 0U);
}

TEST(TextBuffer, GrowsByItsConstantForAPieceUpToIt) {
  TextBuffer buffer;
  buffer.Append(u"a");
  EXPECT_EQ(buffer.Capacity(), 5000U);
  buffer.Append(String(4998, u'b'));
  EXPECT_EQ(buffer.Capacity(), 5000U);
  buffer.Append(u"c");  // would fill it exactly
  EXPECT_EQ(buffer.Capacity(), 10000U);
  EXPECT_EQ(buffer.Used(), 5000U);
}

TEST(TextBuffer, GrowsByTheLengthOfALongerPiece) {
  TextBuffer buffer;
  buffer.Append(String(5000, u'a'));
  EXPECT_EQ(buffer.Capacity(), 5000U);
  buffer.Append(String(5001, u'b'));
  EXPECT_EQ(buffer.Capacity(), 10001U);
  EXPECT_EQ(buffer.Text(), String(5000, u'a') + String(5001, u'b'));
}

TEST(TextBuffer, TakesAnEmptyPiece) {
  TextBuffer buffer;
  buffer.Append(u"");
  EXPECT_EQ(buffer.Text(), u"");
  EXPECT_EQ(buffer.Used(), 0U);
}

}  // namespace
}  // namespace ktrv::forms
