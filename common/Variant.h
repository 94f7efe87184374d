#pragma once

#include <chrono>
#include <cstdint>
#include <variant>

#include "common/Text.h"

namespace ktrv {

/// The value that a column holds when it holds none.
struct Null {
  bool operator==(const Null&) const = default;
};

/// A date and time of day without a zone, to the millisecond; years 1 to 9999.
using DateTime = std::chrono::local_time<std::chrono::milliseconds>;

/// A value that comes from or goes to a database.
using Variant = std::variant<Null, std::int64_t, double, bool, String, DateTime>;

inline bool IsNull(const Variant& value) {
  return std::holds_alternative<Null>(value);
}

/// The value as text, as it is joined to a text: null gives "", a number its NumberText, a boolean
/// "True" or "False", a date "yyyy-mm-dd" with " hh:mm:ss" behind it unless it is midnight.
String ToText(const Variant& value);

/// The number in the fewest digits that mean it, in the "C" locale: decimal, but for numbers of
/// 1e15 and more and fractions below 0.0001, which may have an exponent.
String NumberText(double number);
String NumberText(float number);

/// The value as a whole number. \throws Error InvalidUseOfNull for null, TypeMismatch for a text
/// that is no number or a date, Overflow outside the range. A fraction is rounded half to even.
std::int64_t ToInteger(const Variant& value);

/// "yyyy-mm-dd" or "yyyy-mm-dd hh:mm:ss[.fff]" ("T" may stand for the blank) as a date; nothing
/// when the text is anything else.
std::optional<DateTime> ParseDateTime(StringView text);

}  // namespace ktrv
