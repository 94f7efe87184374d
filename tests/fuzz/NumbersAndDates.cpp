#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <regex>

#include "common/Error.h"
#include "common/Variant.h"
#include "database/Conversion.h"
#include "tests/fuzz/Input.h"

namespace ktrv::fuzz {
namespace {

using database::CellTextOf;
using database::CellValue;
using database::ConvertTo;
using database::DataType;

bool IsAscii(StringView text) {
  return std::ranges::all_of(text, [](char16_t unit) { return unit > 0 && unit < 0x80; });
}

/// As the C library reads it.
std::optional<std::int64_t> OtherInteger(StringView text) {
  static const std::regex form("[+-]?[0-9]+");
  if (!IsAscii(text) || !std::regex_match(ToUtf8(text), form)) return std::nullopt;
  errno = 0;
  const auto number = std::strtoll(ToUtf8(text).c_str(), nullptr, 10);
  if (errno == ERANGE) return std::nullopt;
  return number;
}

std::optional<double> OtherNumber(StringView text) {
  static const std::regex form(R"([+-]?([0-9]+\.?[0-9]*|\.[0-9]+)([eE][+-]?[0-9]+)?)");
  if (!IsAscii(text) || !std::regex_match(ToUtf8(text), form)) return std::nullopt;
  const double number = std::strtod(ToUtf8(text).c_str(), nullptr);
  // Underflow is out of range as overflow is.
  const StringView digits = text.substr(0, text.find_first_of(u"eE"));
  const bool tooSmall = number == 0 && digits.find_first_of(u"123456789") != StringView::npos;
  if (tooSmall || !std::isfinite(number)) return std::nullopt;
  return number;
}

void TryText(StringView text) {
  const auto whole = ParseInteger(text);
  Demand(whole == OtherInteger(text), "a whole number");
  if (whole) Demand(ParseInteger(ToDecimal(*whole)) == whole, "a whole number comes back");
  const auto number = ParseNumber(text);
  Demand(number == OtherNumber(text), "a number");
  if (number) Demand(LeadingNumber(u"  " + String(text)) == *number, "a number in front");
  Demand(std::isfinite(LeadingNumber(text)), "some number in front");

  const auto moment = ParseDateTime(text);
  if (!moment) return;
  const auto written = CellTextOf(*moment);
  Demand(written && ParseDateTime(*written) == moment, "a moment comes back");
  const auto seconds = std::chrono::floor<std::chrono::seconds>(*moment);
  String same = ToText(Variant(*moment));
  DemandEqual(same.substr(0, 10), text.substr(0, 10), "the day stays as it was written");
  Demand(ParseDateTime(same) == DateTime(seconds), "its text means it to the second");
}

template <class Number>
void TryNumber(Number number) {
  if (!std::isfinite(number)) return;
  const String text = NumberText(number);
  const auto back = ParseNumber(text);
  Demand(back && static_cast<Number>(*back) == number, "a number's text means it");
  if (std::is_same_v<Number, double> && std::abs(number) < 9e18) {
    const auto half = static_cast<double>(number);
    const auto rounded = static_cast<double>(ToInteger(half));
    Demand(std::abs(rounded - half) <= 0.5, "a number is rounded to a near one");
    const bool tie = std::abs(rounded - half) == 0.5;
    Demand(!tie || std::fmod(rounded, 2) == 0, "a half goes to the even one");
  }
}

void TryValue(const Variant& value, std::int64_t size, bool narrow) {
  for (const DataType type : {DataType::Integer, DataType::Double, DataType::Date,
                              DataType::Boolean, DataType::VarChar, DataType::VarWChar}) {
    Variant converted;
    try {
      converted = ConvertTo(type, value, size, narrow);
    } catch (const Error& error) {
      Demand(error.Number() == ErrorNumber::DataConversion, "a value is refused as such");
      continue;
    }
    Demand(ConvertTo(type, converted, size, narrow) == converted, "a value of the type stays");
    const auto cell = CellTextOf(converted);
    Demand(CellValue(type, cell) == converted, "a cell gives back what was put in");
    if (!narrow || type != DataType::Integer || IsNull(converted)) continue;
    Demand(std::in_range<std::int32_t>(std::get<std::int64_t>(converted)), "narrow is narrow");
  }
}

Variant Value(Input& input) {
  switch (input.Number(4)) {
    case 0:
      return input.Raw<std::int64_t>();
    case 1: {
      const auto number = input.Raw<double>();
      return std::isfinite(number) ? Variant(number) : Variant(Null{});
    }
    case 2:
      return input.Byte() % 2 == 1;
    case 3: {
      constexpr std::int64_t kFirst = -62135596800000;  // of the years 1 to 9999, in milliseconds
      constexpr std::int64_t kLast = 253402300799999;
      const auto far = input.Raw<std::uint64_t>() % (kLast - kFirst + 1);
      return DateTime(std::chrono::milliseconds(kFirst + static_cast<std::int64_t>(far)));
    }
    default:
      return input.Line();
  }
}

void Try(Input input) {
  const std::size_t size = input.Number(40);
  const bool narrow = input.Byte() % 2 == 1;
  const Variant value = Value(input);
  TryValue(value, static_cast<std::int64_t>(size), narrow);
  if (const auto* number = std::get_if<double>(&value)) TryNumber(*number);
  TryNumber(input.Raw<float>());
  TryText(input.Text());
}

}  // namespace
}  // namespace ktrv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ktrv::fuzz::Try(ktrv::fuzz::Input(data, size));
  return 0;
}
