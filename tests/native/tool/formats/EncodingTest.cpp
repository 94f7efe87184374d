#include "tool/formats/Encoding.h"

#include <gtest/gtest.h>
#include <sstream>

#include "tool/formats/TextSource.h"

namespace ktrv::tool {
namespace {

Encoding Detected(std::string bytes) {
  std::istringstream stream(std::move(bytes));
  return DetectEncoding(stream);
}

String Decoded(std::string bytes, Encoding encoding) {
  std::istringstream stream(std::move(bytes));
  TextSource source(stream, encoding);
  String all;
  for (String part; source.Next(part);) all += part;
  return all;
}

/// UTF-16 of ASCII text.
std::string Wide(std::string_view text, bool littleEndian) {
  std::string bytes;
  for (const char letter : text) {
    bytes += littleEndian ? std::string{letter, '\0'} : std::string{'\0', letter};
  }
  return bytes;
}

TEST(EncodingTest, IsKnownByItsName) {
  EXPECT_EQ(EncodingOf(u"UTF-8"), Encoding::Utf8);
  EXPECT_EQ(EncodingOf(u"utf8"), Encoding::Utf8);
  EXPECT_EQ(EncodingOf(u"utf-16le"), Encoding::Utf16Le);
  EXPECT_EQ(EncodingOf(u"UTF-16BE"), Encoding::Utf16Be);
  EXPECT_EQ(EncodingOf(u"windows-1252"), Encoding::Windows1252);
  EXPECT_EQ(EncodingOf(u"utf-7"), std::nullopt);
  EXPECT_EQ(EncodingOf(u""), std::nullopt);
}

TEST(EncodingTest, IsThatOfTheByteOrderMark) {
  EXPECT_EQ(Detected("\xEF\xBB\xBF\xE9"), Encoding::Utf8);
  EXPECT_EQ(Detected("\xFF\xFE"), Encoding::Utf16Le);
  EXPECT_EQ(Detected("\xFE\xFF"), Encoding::Utf16Be);
}

TEST(EncodingTest, OfUtf16WithoutAMarkIsTheSideOfTheZeros) {
  EXPECT_EQ(Detected(Wide("Name;Mobile", true)), Encoding::Utf16Le);
  EXPECT_EQ(Detected(Wide("Name;Mobile", false)), Encoding::Utf16Be);
}

TEST(EncodingTest, IsUtf8OnlyIfAllBytesAre) {
  EXPECT_EQ(Detected(""), Encoding::Utf8);
  EXPECT_EQ(Detected("Name"), Encoding::Utf8);
  EXPECT_EQ(Detected("M\xC3\xBCller \xF0\x9F\x98\x80"), Encoding::Utf8);
  EXPECT_EQ(Detected("M\xFCller"), Encoding::Windows1252);
  EXPECT_EQ(Detected("cut off \xC3"), Encoding::Windows1252);
}

TEST(EncodingTest, IsDetectedBehindTheFirstPartToo) {
  const std::string ascii(200'000, 'a');
  EXPECT_EQ(Detected(ascii + "\xFC z"), Encoding::Windows1252);
  // The character lies on the border of two parts.
  for (std::size_t border = 65533; border <= 65536; ++border) {
    EXPECT_EQ(Detected(ascii.substr(0, border) + "\xF0\x9F\x98\x80z"), Encoding::Utf8) << border;
  }
}

TEST(TextSourceTest, DecodesEachEncoding) {
  EXPECT_EQ(Decoded("\xE2\x82\xAC\xF0\x9F\x98\x80", Encoding::Utf8), u"€😀");
  EXPECT_EQ(Decoded("\x80\xFC\x99", Encoding::Windows1252), u"€ü™");
  EXPECT_EQ(Decoded(std::string("\xAC\x20\x3D\xD8\x00\xDE", 6), Encoding::Utf16Le), u"€😀");
  EXPECT_EQ(Decoded(std::string("\x20\xAC\xD8\x3D\xDE\x00", 6), Encoding::Utf16Be), u"€😀");
}

TEST(TextSourceTest, RemovesTheMarkAndObeysIt) {
  EXPECT_EQ(Decoded("\xEF\xBB\xBF\xC3\xBC", Encoding::Windows1252), u"ü");
  EXPECT_EQ(Decoded(std::string("\xFF\xFE\xFC\x00", 4), Encoding::Utf8), u"ü");
}

TEST(TextSourceTest, KeepsCharactersOnTheBorderOfTwoParts) {
  for (std::size_t border = 65532; border <= 65536; ++border) {
    const std::string ascii(border, 'a');
    const String expected = String(border, u'a') + u"€😀z";
    EXPECT_EQ(Decoded(ascii + "\xE2\x82\xAC\xF0\x9F\x98\x80z", Encoding::Utf8), expected);
  }
}

TEST(TextSourceTest, MarksInvalidBytes) {
  for (const auto& [bytes, encoding] : {std::pair{std::string("a\xFCz"), Encoding::Utf8},
                                        {std::string("a\xC3"), Encoding::Utf8},
                                        {std::string("\xED\xA0\x80"), Encoding::Utf8},
                                        {std::string("a"), Encoding::Utf16Le},
                                        {std::string("\x3D\xD8", 2), Encoding::Utf16Le}}) {
    EXPECT_TRUE(HasInvalid(Decoded(bytes, encoding))) << testing::PrintToString(bytes);
  }
  EXPECT_EQ(Decoded("a\xFCz", Encoding::Utf8).size(), 3U);
  EXPECT_FALSE(HasInvalid(Decoded("a\xFCz", Encoding::Windows1252)));
  EXPECT_FALSE(HasInvalid(u"€😀"));
}

}  // namespace
}  // namespace ktrv::tool
