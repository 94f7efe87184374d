#include "database/ado/ParameterForm.h"

#include <algorithm>
#include <limits>

#include "database/ado/Constants.h"

namespace ktrv::database::ado {
namespace {

ParameterForm OfText(const Parameter& parameter, StringView text) {
  constexpr std::int64_t kLongestLimited = 4000;
  const auto length = static_cast<std::int64_t>(text.size());
  const std::int64_t size = std::max({parameter.Size, length, std::int64_t{1}});
  const bool limited = size <= kLongestLimited;
  if (parameter.Type == DataType::VarChar && FitsCodePage(text))
    return {limited ? AdoType::VarChar : AdoType::LongVarChar, size};
  return {limited ? AdoType::VarWChar : AdoType::LongVarWChar, size};
}

ParameterForm OfNull(const Parameter& parameter) {
  switch (parameter.Type) {
    case DataType::Integer:
      return {AdoType::Integer};
    case DataType::Double:
      return {AdoType::Double};
    case DataType::Date:
      return {AdoType::DbTimeStamp};
    case DataType::Boolean:
      return {AdoType::Boolean};
    case DataType::VarChar:
    case DataType::VarWChar:
      break;
  }
  return OfText(parameter, {});
}

}  // namespace

ParameterForm ParameterForm::Of(const Parameter& parameter, const Variant& value) {
  using Narrow = std::numeric_limits<std::int32_t>;
  if (const auto* whole = std::get_if<std::int64_t>(&value)) {
    const bool fits = *whole >= Narrow::min() && *whole <= Narrow::max();
    return {fits ? AdoType::Integer : AdoType::BigInt};
  }
  if (std::holds_alternative<double>(value)) return {AdoType::Double};
  if (std::holds_alternative<bool>(value)) return {AdoType::Boolean};
  if (std::holds_alternative<DateTime>(value)) return {AdoType::DbTimeStamp};
  if (const auto* text = std::get_if<String>(&value)) return OfText(parameter, *text);
  return OfNull(parameter);
}

}  // namespace ktrv::database::ado
