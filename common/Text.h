#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ktrv {

/// Text as in the host's BSTRs: UTF-16. Lengths, positions and limits count UTF-16 units.
using String = std::u16string;
using StringView = std::u16string_view;

/// Without the blanks (U+0020, and nothing else) at the start.
StringView LTrim(StringView text);

/// Without the blanks (U+0020, and nothing else) at both ends.
StringView Trim(StringView text);

/// With a to z as capitals and every other unit unchanged: for dialect words and key texts, not for
/// names (controls::Language folds those).
String ToUpperAscii(StringView text);

/// Whether two names of columns or keys are the same but for the case of a to z.
bool EqualsIgnoringCase(StringView left, StringView right);

/// Decimal text without leading zeros, with "-" when negative.
String ToDecimal(std::int64_t number);

/// Whether the text is one or more of the digits 0 to 9 and nothing else: the only form in which an
/// id may be written into the text of a query.
bool IsDecimalDigits(StringView text);

/// The whole text as a decimal number with an optional sign; nothing when it is anything else or
/// leaves the range.
std::optional<std::int64_t> ParseInteger(StringView text);

/// The whole text as a number in the form of the "C" locale; nothing when it is anything else.
std::optional<double> ParseNumber(StringView text);

/// The value of the number that the text starts with after blanks; 0 when it starts with none.
double LeadingNumber(StringView text);

/// UTF-8 of the text; a surrogate without its partner becomes U+FFFD.
std::string ToUtf8(StringView text);

/// UTF-16 of UTF-8; each byte that is no part of a valid sequence becomes U+FFFD.
String FromUtf8(std::string_view bytes);

}  // namespace ktrv
