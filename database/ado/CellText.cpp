#include <charconv>
#include <iterator>

#include "database/Conversion.h"
#include "database/DataError.h"
#include "database/ado/OleDate.h"
#include "database/ado/Value.h"

namespace ktrv::database::ado {
namespace {

template <class Number>
String Digits(Number number) {
  char digits[40];
  const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
  return String(std::begin(digits), end);
}

/// Inserts a decimal point before the last `places` digits.
String WithPoint(String digits, std::size_t places, bool negative) {
  if (places > 0) {
    if (digits.size() <= places) digits.insert(0, places + 1 - digits.size(), u'0');
    digits.insert(digits.size() - places, 1, u'.');
  }
  return negative ? u"-" + digits : digits;
}

String CurrencyText(std::int64_t tenThousandths) {
  const bool negative = tenThousandths < 0;
  const auto size = static_cast<std::uint64_t>(tenThousandths);
  String text = WithPoint(Digits(negative ? 0 - size : size), 4, negative);
  text.erase(text.find_last_not_of(u'0') + 1);
  if (text.back() == u'.') text.pop_back();
  return text;
}

/// All 96 bits, in the "C" locale; the system's conversion uses the user's locale.
String DecimalText(const DECIMAL& decimal) {
  std::uint64_t parts[3] = {decimal.Hi32, decimal.Mid32, decimal.Lo32};
  String digits;
  while (parts[0] != 0 || parts[1] != 0 || parts[2] != 0) {
    std::uint64_t remainder = 0;
    for (std::uint64_t& part : parts) {
      part |= remainder << 32;
      remainder = part % 10;
      part /= 10;
    }
    digits.insert(0, 1, static_cast<char16_t>(u'0' + remainder));
  }
  if (digits.empty()) digits = u"0";
  return WithPoint(std::move(digits), decimal.scale, decimal.sign != 0);
}

String BytesText(SAFEARRAY* bytes) {
  String text;
  unsigned char* data = nullptr;
  if (FAILED(SafeArrayAccessData(bytes, reinterpret_cast<void**>(&data)))) return text;
  const StringView digits = u"0123456789ABCDEF";
  for (ULONG index = 0; index < bytes->rgsabound[0].cElements; ++index) {
    text += digits[data[index] >> 4];
    text += digits[data[index] & 15];
  }
  SafeArrayUnaccessData(bytes);
  return text;
}

}  // namespace

std::optional<String> CellTextOf(const VARIANT& value) {
  switch (V_VT(&value)) {
    case VT_EMPTY:
    case VT_NULL:
      return std::nullopt;
    case VT_BSTR:
      return String(reinterpret_cast<const char16_t*>(V_BSTR(&value)),
                    SysStringLen(V_BSTR(&value)));
    case VT_I1:
      return Digits(int{V_I1(&value)});
    case VT_UI1:
      return Digits(int{V_UI1(&value)});
    case VT_I2:
      return Digits(V_I2(&value));
    case VT_UI2:
      return Digits(V_UI2(&value));
    case VT_I4:
    case VT_INT:
      return Digits(V_I4(&value));
    case VT_UI4:
    case VT_UINT:
      return Digits(V_UI4(&value));
    case VT_I8:
      return Digits(V_I8(&value));
    case VT_UI8:
      return Digits(V_UI8(&value));
    case VT_R4:
      return NumberText(V_R4(&value));  // a float needs fewer digits than a double
    case VT_R8:
      return database::CellTextOf(V_R8(&value));
    case VT_BOOL:
      return database::CellTextOf(V_BOOL(&value) != VARIANT_FALSE);
    case VT_DATE:
      return database::CellTextOf(FromOleDate(V_DATE(&value)));
    case VT_CY:
      return CurrencyText(V_CY(&value).int64);
    case VT_DECIMAL:
      return DecimalText(V_DECIMAL(&value));
    case VT_ARRAY | VT_UI1:
      return BytesText(V_ARRAY(&value));
    default:
      throw DataError(ErrorNumber::DataConversion);
  }
}

}  // namespace ktrv::database::ado
