#include "common/Variant.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "common/Error.h"

namespace ktrv {
namespace {

template <class... Cases>
struct Overloaded : Cases... {
  using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

String Padded(std::int64_t number, std::size_t width) {
  const String digits = ToDecimal(number);
  return String(digits.size() < width ? width - digits.size() : 0, u'0') + digits;
}

template <class Number>
String FewestDigits(Number number) {
  const Number size = std::abs(number);
  const bool decimal = size == 0 || (size >= Number(1e-4) && size < Number(1e15));
  char digits[40];
  const auto end = decimal ? std::to_chars(std::begin(digits), std::end(digits), number,
                                           std::chars_format::fixed)
                                 .ptr
                           : std::to_chars(std::begin(digits), std::end(digits), number).ptr;
  return String(std::begin(digits), end);
}

String DateText(DateTime moment) {
  const auto day = std::chrono::floor<std::chrono::days>(moment);
  const std::chrono::year_month_day date{day};
  String text = Padded(static_cast<int>(date.year()), 4) + u"-" +
                Padded(static_cast<unsigned>(date.month()), 2) + u"-" +
                Padded(static_cast<unsigned>(date.day()), 2);
  const std::chrono::hh_mm_ss time{moment - day};
  if (moment != day) {
    text += u" " + Padded(time.hours().count(), 2) + u":" + Padded(time.minutes().count(), 2) +
            u":" + Padded(time.seconds().count(), 2);
  }
  return text;
}

std::int64_t Rounded(double number) {
  const double whole = std::nearbyint(number);
  constexpr double kLimit = 9223372036854775808.0;  // 2^63, the first value out of range
  if (!(whole >= -kLimit && whole < kLimit)) throw Error(ErrorNumber::Overflow);
  return static_cast<std::int64_t>(whole);
}

/// Removes exactly `width` digits from the start of the text and returns their value.
std::optional<int> TakeDigits(StringView& text, std::size_t width) {
  if (text.size() < width || !IsDecimalDigits(text.substr(0, width))) return std::nullopt;
  const auto number = ParseInteger(text.substr(0, width));
  text.remove_prefix(width);
  return static_cast<int>(*number);
}

bool TakeUnit(StringView& text, StringView anyOf) {
  if (text.empty() || anyOf.find(text.front()) == StringView::npos) return false;
  text.remove_prefix(1);
  return true;
}

std::optional<std::chrono::milliseconds> ParseTimeOfDay(StringView text) {
  const auto hours = TakeDigits(text, 2);
  if (!hours || *hours > 23 || !TakeUnit(text, u":")) return std::nullopt;
  const auto minutes = TakeDigits(text, 2);
  if (!minutes || *minutes > 59 || !TakeUnit(text, u":")) return std::nullopt;
  const auto seconds = TakeDigits(text, 2);
  if (!seconds || *seconds > 59) return std::nullopt;
  int milliseconds = 0;
  if (TakeUnit(text, u".")) {
    if (!IsDecimalDigits(text)) return std::nullopt;
    const String three = (String(text) + u"00").substr(0, 3);
    milliseconds = static_cast<int>(*ParseInteger(three));
  } else if (!text.empty()) {
    return std::nullopt;
  }
  return std::chrono::hours(*hours) + std::chrono::minutes(*minutes) +
         std::chrono::seconds(*seconds) + std::chrono::milliseconds(milliseconds);
}

}  // namespace

String NumberText(double number) {
  return FewestDigits(number);
}

String NumberText(float number) {
  return FewestDigits(number);
}

String ToText(const Variant& value) {
  return std::visit(Overloaded{
                        [](const Null&) { return String(); },
                        [](std::int64_t number) { return ToDecimal(number); },
                        [](double number) { return NumberText(number); },
                        [](bool truth) { return truth ? String(u"True") : String(u"False"); },
                        [](const String& text) { return text; },
                        [](DateTime moment) { return DateText(moment); },
                    },
                    value);
}

std::int64_t ToInteger(const Variant& value) {
  return std::visit(
      Overloaded{
          [](const Null&) -> std::int64_t { throw Error(ErrorNumber::InvalidUseOfNull); },
          [](std::int64_t number) { return number; },
          [](double number) { return Rounded(number); },
          [](bool truth) -> std::int64_t { return truth ? 1 : 0; },
          [](const String& text) -> std::int64_t {
            if (const auto whole = ParseInteger(Trim(text))) return *whole;
            if (const auto number = ParseNumber(Trim(text))) return Rounded(*number);
            throw Error(ErrorNumber::TypeMismatch);
          },
          [](DateTime) -> std::int64_t { throw Error(ErrorNumber::TypeMismatch); },
      },
      value);
}

std::optional<DateTime> ParseDateTime(StringView text) {
  const auto year = TakeDigits(text, 4);
  if (!year || *year < 1 || !TakeUnit(text, u"-")) return std::nullopt;
  const auto month = TakeDigits(text, 2);
  if (!month || !TakeUnit(text, u"-")) return std::nullopt;
  const auto day = TakeDigits(text, 2);
  if (!day) return std::nullopt;
  const std::chrono::year_month_day date{std::chrono::year(*year),
                                         std::chrono::month(static_cast<unsigned>(*month)),
                                         std::chrono::day(static_cast<unsigned>(*day))};
  if (!date.ok()) return std::nullopt;
  const DateTime midnight{std::chrono::local_days(date)};
  if (text.empty()) return midnight;
  if (!TakeUnit(text, u" T")) return std::nullopt;
  const auto time = ParseTimeOfDay(text);
  if (!time) return std::nullopt;
  return midnight + *time;
}

}  // namespace ktrv
