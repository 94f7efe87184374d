#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ktrv {

/// UTF-16 text, like the host's BSTRs. Lengths, positions and limits count UTF-16 units.
using String = std::u16string;
using StringView = std::u16string_view;

/// Removes leading blanks (U+0020 only).
StringView LTrim(StringView text);

/// Removes leading and trailing blanks (U+0020 only).
StringView Trim(StringView text);

/// Converts a to z to upper case; leaves all other units. For dialect words and keys. For names use
/// controls::Language.
String ToUpperAscii(StringView text);

/// Compares two names of columns or keys; ignores the case of a to z.
bool EqualsIgnoringCase(StringView left, StringView right);

/// Decimal digits without leading zeros; "-" for negative numbers.
String ToDecimal(std::int64_t number);

/// Whether the text consists of one or more digits 0 to 9. Only such an id may become part of a
/// query text.
bool IsDecimalDigits(StringView text);

/// The whole text as a decimal integer with optional sign; nullopt for other texts and out of
/// range.
std::optional<std::int64_t> ParseInteger(StringView text);

/// The whole text as a number in the "C" locale; nullopt for other texts and infinite numbers.
std::optional<double> ParseNumber(StringView text);

/// The number at the start of the text, after blanks; 0 when there is none.
double LeadingNumber(StringView text);

/// Converts to UTF-8; an unpaired surrogate becomes U+FFFD.
std::string ToUtf8(StringView text);

/// Converts from UTF-8; each invalid byte becomes U+FFFD.
String FromUtf8(std::string_view bytes);

/// One code point and its length in bytes. Length 0 for invalid UTF-8, which includes overlong
/// forms and surrogates.
struct DecodedUtf8 {
  char32_t Code = 0;
  std::size_t Length = 0;
};

/// The code point at the start of the bytes. \pre not empty
DecodedUtf8 DecodeUtf8(std::string_view bytes);

/// Appends a code point as one or two units.
void AppendCodePoint(String& text, char32_t code);

}  // namespace ktrv
