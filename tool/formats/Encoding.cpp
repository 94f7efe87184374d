#include "tool/formats/Encoding.h"

#include <array>
#include <string>

namespace ktrv::tool {
namespace {

constexpr std::size_t kChunk = 65536;  // bytes

struct Mark {
  Encoding Of;
  std::string_view Bytes;
};
constexpr std::array kMarks{Mark{Encoding::Utf8, "\xEF\xBB\xBF"},
                            Mark{Encoding::Utf16Le, "\xFF\xFE"},
                            Mark{Encoding::Utf16Be, "\xFE\xFF"}};

/// UTF-16 without a mark: in the usual scripts one byte of most pairs is zero, always the same one.
std::optional<Encoding> ByZeros(std::string_view bytes) {
  std::array<std::size_t, 2> zeros{};
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    if (bytes[at] == '\0') ++zeros[at % 2];
  }
  constexpr std::size_t kFewest = 8;  // one pair of so many
  const std::size_t pairs = bytes.size() / 2;
  if (zeros[0] == 0 && zeros[1] > pairs / kFewest) return Encoding::Utf16Le;
  if (zeros[1] == 0 && zeros[0] > pairs / kFewest) return Encoding::Utf16Be;
  return std::nullopt;
}

/// Whether the bytes are valid UTF-8. \param rest receives the start of a sequence that is cut off
bool IsUtf8(std::string_view bytes, std::string& rest) {
  constexpr std::size_t kLongest = 4;  // bytes of a code point
  while (!bytes.empty()) {
    std::size_t ascii = 0;
    while (ascii < bytes.size() && static_cast<unsigned char>(bytes[ascii]) < 0x80) ++ascii;
    bytes.remove_prefix(ascii);
    if (bytes.empty()) break;
    const std::size_t length = DecodeUtf8(bytes).Length;
    if (length == 0) {
      rest = bytes;
      // A sequence that the next chunk may complete is shorter than a whole one.
      return bytes.size() < kLongest && static_cast<unsigned char>(bytes[0]) >= 0xC2;
    }
    bytes.remove_prefix(length);
  }
  rest.clear();
  return true;
}

}  // namespace

std::optional<Encoding> EncodingOf(StringView name) {
  String plain;
  for (const char16_t unit : ToUpperAscii(name)) {
    if (unit != u'-' && unit != u'_') plain += unit;
  }
  if (plain == u"UTF8") return Encoding::Utf8;
  if (plain == u"UTF16LE" || plain == u"UTF16" || plain == u"UNICODE") return Encoding::Utf16Le;
  if (plain == u"UTF16BE") return Encoding::Utf16Be;
  for (const StringView known : {u"WINDOWS1252", u"CP1252", u"1252", u"ISO88591", u"LATIN1"}) {
    if (plain == known) return Encoding::Windows1252;
  }
  return std::nullopt;
}

std::optional<Encoding> EncodingOfMark(std::string_view bytes, std::size_t& length) {
  for (const Mark& mark : kMarks) {
    if (!bytes.starts_with(mark.Bytes)) continue;
    length = mark.Bytes.size();
    return mark.Of;
  }
  return std::nullopt;
}

Encoding DetectEncoding(std::istream& bytes) {
  std::string chunk;
  std::string rest;
  for (bool isFirst = true; bytes; isFirst = false) {
    chunk = rest;
    chunk.resize(rest.size() + kChunk);
    bytes.read(chunk.data() + rest.size(), kChunk);
    chunk.resize(rest.size() + static_cast<std::size_t>(bytes.gcount()));
    if (isFirst) {
      std::size_t ignored = 0;
      if (const auto marked = EncodingOfMark(chunk, ignored)) return *marked;
      if (const auto wide = ByZeros(chunk)) return *wide;
    }
    if (!IsUtf8(chunk, rest)) return Encoding::Windows1252;
  }
  return rest.empty() ? Encoding::Utf8 : Encoding::Windows1252;
}

char16_t FromWindows1252(char byte) {
  // 0x80 to 0x9F; the other bytes are those of Unicode.
  constexpr StringView kDiffering =
      u"\u20AC\u0081\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u008D\u017D"
      u"\u008F\u0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u009D"
      u"\u017E\u0178";
  static_assert(kDiffering.size() == 0x20);
  const auto code = static_cast<unsigned char>(byte);
  return code >= 0x80 && code < 0xA0 ? kDiffering[code - 0x80U] : code;
}

}  // namespace ktrv::tool
