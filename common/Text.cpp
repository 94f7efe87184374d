#include "common/Text.h"

#include <charconv>
#include <cmath>

#include "common/Surrogates.h"

namespace ktrv {
namespace {

constexpr char16_t kReplacement = 0xFFFD;

char16_t UpperAscii(char16_t unit) {
  return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
}

/// The ASCII units at the start of the text, as bytes.
std::string AsciiPrefix(StringView text) {
  std::string bytes;
  for (const char16_t unit : text) {
    if (unit >= 0x80) break;
    bytes.push_back(static_cast<char>(unit));
  }
  return bytes;
}

bool IsDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}

/// Removes a leading "+", which std::from_chars does not accept.
StringView WithoutPlus(StringView text) {
  const bool plus =
      text.size() > 1 && text.front() == u'+' && (IsDigit(text[1]) || text[1] == u'.');
  return plus ? text.substr(1) : text;
}

void AppendUtf8(std::string& bytes, char32_t code) {
  const auto put = [&](char32_t byte) { bytes.push_back(static_cast<char>(byte)); };
  const auto tail = [&](int shift) { put(0x80 | ((code >> shift) & 0x3F)); };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0 | (code >> 6)), tail(0);
  } else if (code < 0x10000) {
    put(0xE0 | (code >> 12)), tail(6), tail(0);
  } else {
    put(0xF0 | (code >> 18)), tail(12), tail(6), tail(0);
  }
}

}  // namespace

StringView LTrim(StringView text) {
  const std::size_t start = text.find_first_not_of(u' ');
  return start == StringView::npos ? StringView{} : text.substr(start);
}

StringView Trim(StringView text) {
  text = LTrim(text);
  return text.substr(0, text.find_last_not_of(u' ') + 1);
}

String ToUpperAscii(StringView text) {
  String upper(text);
  for (char16_t& unit : upper) unit = UpperAscii(unit);
  return upper;
}

bool EqualsIgnoringCase(StringView left, StringView right) {
  if (left.size() != right.size()) return false;
  for (std::size_t i = 0; i < left.size(); ++i) {
    if (UpperAscii(left[i]) != UpperAscii(right[i])) return false;
  }
  return true;
}

String ToDecimal(std::int64_t number) {
  char digits[24];
  const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
  return String(std::begin(digits), end);
}

bool IsDecimalDigits(StringView text) {
  return !text.empty() && text.find_first_not_of(u"0123456789") == StringView::npos;
}

std::optional<std::int64_t> ParseInteger(StringView text) {
  const std::string bytes = AsciiPrefix(WithoutPlus(text));
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(bytes.data(), bytes.data() + bytes.size(), number);
  const bool whole = end == bytes.data() + bytes.size() && bytes.size() == WithoutPlus(text).size();
  if (error != std::errc{} || !whole) return std::nullopt;
  return number;
}

std::optional<double> ParseNumber(StringView text) {
  const std::string bytes = AsciiPrefix(WithoutPlus(text));
  double number = 0;
  const auto [end, error] = std::from_chars(bytes.data(), bytes.data() + bytes.size(), number);
  const bool whole = end == bytes.data() + bytes.size() && bytes.size() == WithoutPlus(text).size();
  if (error != std::errc{} || !whole || !std::isfinite(number)) return std::nullopt;
  return number;
}

double LeadingNumber(StringView text) {
  const std::string bytes = AsciiPrefix(WithoutPlus(LTrim(text)));
  double number = 0;
  const auto error = std::from_chars(bytes.data(), bytes.data() + bytes.size(), number).ec;
  return error == std::errc{} && std::isfinite(number) ? number : 0;
}

std::string ToUtf8(StringView text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    if (IsHighSurrogate(unit) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      const char32_t high = unit - 0xD800U;
      AppendUtf8(bytes, 0x10000 + (high << 10) + (text[++i] - 0xDC00U));
    } else {
      AppendUtf8(bytes, IsHighSurrogate(unit) || IsLowSurrogate(unit) ? kReplacement : unit);
    }
  }
  return bytes;
}

DecodedUtf8 DecodeUtf8(std::string_view bytes) {
  const auto at = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const unsigned char lead = at(0);
  if (lead < 0x80) return {lead, 1};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || bytes.size() < length) return {};
  char32_t code = lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((at(i) & 0xC0) != 0x80) return {};
    code = (code << 6) | (at(i) & 0x3F);
  }
  constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
  if (code < kSmallest[length] || code > 0x10FFFF || surrogate) return {};
  return {code, length};
}

void AppendCodePoint(String& text, char32_t code) {
  if (code >= 0x10000) {
    text.push_back(static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10)));
    text.push_back(static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF)));
  } else {
    text.push_back(static_cast<char16_t>(code));
  }
}

String FromUtf8(std::string_view bytes) {
  String text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    const DecodedUtf8 decoded = DecodeUtf8(bytes);
    if (decoded.Length == 0) {
      text.push_back(kReplacement);
      bytes.remove_prefix(1);
      continue;
    }
    AppendCodePoint(text, decoded.Code);
    bytes.remove_prefix(decoded.Length);
  }
  return text;
}

}  // namespace ktrv
