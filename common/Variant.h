#pragma once

#include <chrono>
#include <cstdint>
#include <variant>

#include "common/Text.h"

namespace ktrv {

/// The database null. Its copying is written out for the sake of Variant: libstdc++ takes a variant
/// of texts and trivially copyable types for one that always has a value, and crashes when the
/// memory for the copy of a text is short.
struct Null {
  Null() = default;
  Null(const Null& /*unused*/) noexcept {}
  Null& operator=(const Null& /*unused*/) noexcept { return *this; }
  ~Null() = default;
  bool operator==(const Null&) const = default;
};

/// Local date and time with a resolution of 1 ms; years 1 to 9999.
using DateTime = std::chrono::local_time<std::chrono::milliseconds>;

/// A value read from or written to a database.
using Variant = std::variant<Null, std::int64_t, double, bool, String, DateTime>;

inline bool IsNull(const Variant& value) {
  return std::holds_alternative<Null>(value);
}

/// The value as text: null gives "", a number its NumberText, a boolean "True" or "False", a date
/// "yyyy-mm-dd", followed by " hh:mm:ss" unless the time is midnight.
String ToText(const Variant& value);

/// The shortest text that gives the same number when parsed, in the "C" locale. Numbers from 1e15
/// and below 0.0001 may have an exponent.
String NumberText(double number);
String NumberText(float number);

/// The value as an integer; fractions are rounded half to even. \throws Error InvalidUseOfNull for
/// null, TypeMismatch for a date or a text that is not a number, Overflow out of range
std::int64_t ToInteger(const Variant& value);

/// Parses "yyyy-mm-dd" or "yyyy-mm-dd hh:mm:ss[.fff]" (blank or "T" between date and time); nullopt
/// for other texts.
std::optional<DateTime> ParseDateTime(StringView text);

}  // namespace ktrv
