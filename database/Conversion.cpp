#include "database/Conversion.h"

#include <limits>

#include "database/DataError.h"

namespace ktrv::database {
namespace {

Variant WholeNumber(const Variant& value, bool narrow) {
  const std::int64_t number = ToInteger(value);
  using Narrow = std::numeric_limits<std::int32_t>;
  if (narrow && (number < Narrow::min() || number > Narrow::max())) {
    throw DataError(ErrorNumber::DataConversion);
  }
  return number;
}

Variant FloatingNumber(const Variant& value) {
  if (const auto* number = std::get_if<double>(&value)) return *number;
  if (const auto* text = std::get_if<String>(&value)) {
    const auto number = ParseNumber(Trim(*text));
    if (!number) throw DataError(ErrorNumber::DataConversion);
    return *number;
  }
  return static_cast<double>(ToInteger(value));
}

Variant Date(const Variant& value) {
  if (std::holds_alternative<DateTime>(value)) return value;
  if (const auto* text = std::get_if<String>(&value)) {
    if (const auto moment = ParseDateTime(Trim(*text))) return *moment;
  }
  throw DataError(ErrorNumber::DataConversion);
}

Variant Characters(const Variant& value, std::int64_t size) {
  String text = ToText(value);
  if (size > 0 && text.size() > static_cast<std::size_t>(size)) {
    throw DataError(ErrorNumber::DataConversion);
  }
  return text;
}

std::optional<bool> ParseTruth(StringView text) {
  if (text == u"1" || text == u"-1" || EqualsIgnoringCase(text, u"t")) return true;
  if (text == u"0" || EqualsIgnoringCase(text, u"f")) return false;
  if (EqualsIgnoringCase(text, u"true")) return true;
  if (EqualsIgnoringCase(text, u"false")) return false;
  return std::nullopt;
}

}  // namespace

Variant ConvertTo(DataType type, const Variant& value, std::int64_t size, bool narrow) {
  if (IsNull(value)) return value;
  try {
    switch (type) {
      case DataType::Integer:
        return WholeNumber(value, narrow);
      case DataType::Double:
        return FloatingNumber(value);
      case DataType::Date:
        return Date(value);
      case DataType::Boolean:
        return ToInteger(value) != 0;
      case DataType::VarChar:
      case DataType::VarWChar:
        return Characters(value, size);
    }
  } catch (const Error&) {
    // Map type mismatch and overflow to the error of data objects.
    throw DataError(ErrorNumber::DataConversion);
  }
  throw DataError(ErrorNumber::DataConversion);
}

Variant CellValue(DataType type, std::optional<StringView> text) {
  if (!text) return Null{};
  switch (type) {
    case DataType::Integer:
      if (const auto number = ParseInteger(*text)) return *number;
      [[fallthrough]];  // a fraction in an integer column
    case DataType::Double:
      if (const auto number = ParseNumber(*text)) return *number;
      break;
    case DataType::Date:
      if (const auto moment = ParseDateTime(*text)) return *moment;
      break;
    case DataType::Boolean:
      if (const auto truth = ParseTruth(*text)) return *truth;
      break;
    case DataType::VarChar:
    case DataType::VarWChar:
      break;
  }
  return String(*text);
}

std::optional<String> CellTextOf(const Variant& value) {
  if (IsNull(value)) return std::nullopt;
  if (const auto* truth = std::get_if<bool>(&value)) return String(*truth ? u"1" : u"0");
  String text = ToText(value);
  if (const auto* moment = std::get_if<DateTime>(&value)) {
    const auto fraction = *moment - std::chrono::floor<std::chrono::seconds>(*moment);
    if (fraction.count() > 0) {
      if (text.size() <= 10) text += u" 00:00:00";
      const String digits = ToDecimal(fraction.count());
      text += u"." + String(3 - digits.size(), u'0') + digits;
    }
  }
  return text;
}

bool IsHeld(StringView cell, StringView written) {
  const auto withoutBlanksBehind = [](StringView text) {
    return text.substr(0, text.find_last_not_of(u' ') + 1);
  };
  return withoutBlanksBehind(cell) == withoutBlanksBehind(written);
}

}  // namespace ktrv::database
