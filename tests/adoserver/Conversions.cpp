#include "tests/adoserver/Conversions.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "database/ado/Constants.h"
#include "tests/adoserver/Refusal.h"

namespace ktrv::adoserver {
namespace {

using namespace database;
namespace AdoType = database::ado::AdoType;

struct TypeForm {
  std::int32_t Type;
  VARTYPE Form;
  DataType Kind;
};

constexpr TypeForm kTypes[] = {
    {AdoType::SmallInt, VT_I2, DataType::Integer},
    {AdoType::Integer, VT_I4, DataType::Integer},
    {AdoType::BigInt, VT_I8, DataType::Integer},
    {AdoType::Double, VT_R8, DataType::Double},
    {AdoType::Date, VT_DATE, DataType::Date},
    {AdoType::DbTimeStamp, VT_DATE, DataType::Date},
    {AdoType::Boolean, VT_BOOL, DataType::Boolean},
    {AdoType::VarChar, VT_BSTR, DataType::VarChar},
    {AdoType::LongVarChar, VT_BSTR, DataType::VarChar},
    {AdoType::VarWChar, VT_BSTR, DataType::VarWChar},
    {AdoType::LongVarWChar, VT_BSTR, DataType::VarWChar},
};

const TypeForm* Find(std::int32_t type) {
  const auto* const found = std::find_if(std::begin(kTypes), std::end(kTypes),
                                         [&](const TypeForm& each) { return each.Type == type; });
  return found == std::end(kTypes) ? nullptr : found;
}

/// Through the system's calendar, so that it does not repeat an error of the driver's own.
double OleDate(DateTime moment) {
  const auto day = std::chrono::floor<std::chrono::days>(moment);
  const std::chrono::year_month_day date{day};
  SYSTEMTIME midnight = {};
  midnight.wYear = static_cast<WORD>(static_cast<int>(date.year()));
  midnight.wMonth = static_cast<WORD>(static_cast<unsigned>(date.month()));
  midnight.wDay = static_cast<WORD>(static_cast<unsigned>(date.day()));
  double number = 0;
  if (!SystemTimeToVariantTime(&midnight, &number)) throw Refusal(kCannotConvert);
  const double fraction = static_cast<double>((moment - day).count()) / 86'400'000.0;
  return number < 0 ? number - fraction : number + fraction;
}

DateTime Moment(double date) {
  SYSTEMTIME day = {};
  if (!VariantTimeToSystemTime(std::trunc(date), &day)) throw Refusal(ErrorNumber::DataConversion);
  const std::chrono::year_month_day civil{
      std::chrono::year(day.wYear), std::chrono::month(day.wMonth), std::chrono::day(day.wDay)};
  const double time = std::abs(date - std::trunc(date)) * 86'400'000.0;
  return DateTime(std::chrono::local_days(civil)) + std::chrono::milliseconds(std::llround(time));
}

String ThroughCodePage(const String& text) {
  const auto* wide = reinterpret_cast<const wchar_t*>(text.data());
  const auto units = static_cast<int>(text.size());
  std::string bytes(4 * text.size() + 1, '\0');
  const int size = WideCharToMultiByte(CP_ACP, 0, wide, units, bytes.data(),
                                       static_cast<int>(bytes.size()), nullptr, nullptr);
  String back(text.size() + 1, u'\0');
  const int length =
      MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, reinterpret_cast<wchar_t*>(back.data()),
                          static_cast<int>(back.size()));
  back.resize(static_cast<std::size_t>(length));
  return back;
}

/// Empty when the cell holds no value of the type.
Value TypedValue(DataType type, StringView cell) {
  Value value;
  VARIANT& raw = value.Raw();
  if (type == DataType::Integer || type == DataType::Boolean) {
    const auto number = ParseInteger(cell);
    if (number && type == DataType::Boolean) return Value(*number != 0);
    if (!number) return value;
    V_VT(&raw) = VT_I8;
    V_I8(&raw) = *number;
  } else if (type == DataType::Double) {
    const auto number = ParseNumber(cell);
    if (!number) return value;
    V_VT(&raw) = VT_R8;
    V_R8(&raw) = *number;
  } else if (type == DataType::Date) {
    const auto moment = ParseDateTime(cell);
    if (!moment) return value;
    V_VT(&raw) = VT_DATE;
    V_DATE(&raw) = OleDate(*moment);
  } else {
    return Value(cell);
  }
  return value;
}

}  // namespace

bool IsParameterType(std::int32_t type) {
  return Find(type) != nullptr;
}

bool IsVariableLength(std::int32_t type) {
  const TypeForm* const found = Find(type);
  return found && found->Form == VT_BSTR;
}

DataType DataTypeOf(std::int32_t type) {
  return Find(type)->Kind;
}

Value Coerced(const VARIANT& value, std::int32_t type, std::int64_t size) {
  Value coerced;
  if (V_VT(&value) == VT_NULL || V_VT(&value) == VT_EMPTY) {
    VariantCopy(&coerced.Raw(), const_cast<VARIANT*>(&value));
    return coerced;
  }
  if (FAILED(VariantChangeTypeEx(&coerced.Raw(), const_cast<VARIANT*>(&value), LOCALE_INVARIANT, 0,
                                 Find(type)->Form))) {
    throw Refusal(ErrorNumber::DataConversion);
  }
  const bool tooLong = IsVariableLength(type) && SysStringLen(V_BSTR(&coerced.Raw())) > size;
  if (tooLong) throw Refusal(ErrorNumber::DataConversion);
  return coerced;
}

Variant ForOdbc(const Value& value, std::int32_t type) {
  const VARIANT& raw = value.Raw();
  switch (V_VT(&raw)) {
    case VT_NULL:
      return Null{};
    case VT_I2:
      return std::int64_t{V_I2(&raw)};
    case VT_I4:
      return std::int64_t{V_I4(&raw)};
    case VT_I8:
      return std::int64_t{V_I8(&raw)};
    case VT_R8:
      return V_R8(&raw);
    case VT_DATE:
      return Moment(V_DATE(&raw));
    case VT_BOOL:
      return V_BOOL(&raw) != VARIANT_FALSE;
    case VT_BSTR:
      return DataTypeOf(type) == DataType::VarChar ? ThroughCodePage(value.Text()) : value.Text();
    default:
      throw Refusal(kParameterWithoutValue);
  }
}

std::int32_t FieldType(const Column& column) {
  switch (column.Type) {
    case DataType::Integer:
      return AdoType::BigInt;
    case DataType::Double:
      return AdoType::Double;
    case DataType::Date:
      return AdoType::DbTimeStamp;
    case DataType::Boolean:
      return AdoType::Boolean;
    case DataType::VarChar:
      return column.Size > 0 ? AdoType::VarChar : AdoType::LongVarChar;
    case DataType::VarWChar:
      break;
  }
  return column.Size > 0 ? AdoType::VarWChar : AdoType::LongVarWChar;
}

Value FieldValue(const Column& column, std::optional<StringView> cell, Engine engine) {
  if (!cell) return Value(Variant(Null{}));
  Value value = TypedValue(column.Type, *cell);
  if (engine == Engine::Sqlite) {
    return database::ado::CellTextOf(value.Raw()) == cell ? std::move(value) : Value(*cell);
  }
  if (V_VT(&value.Raw()) == VT_EMPTY) throw Refusal(kCannotConvert);
  return value;
}

}  // namespace ktrv::adoserver
