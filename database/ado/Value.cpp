#include "database/ado/Value.h"

#include <limits>
#include <new>
#include <utility>

#include "database/DataError.h"
#include "database/ado/OleDate.h"

namespace ktrv::database::ado {
namespace {

BSTR NewBstr(StringView text) {
  const BSTR made = SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()),
                                      static_cast<UINT>(text.size()));
  if (!made) throw std::bad_alloc();
  return made;
}

}  // namespace

Value::Value(std::int32_t number) noexcept : Value() {
  V_VT(&raw_) = VT_I4;
  V_I4(&raw_) = number;
}

Value::Value(bool truth) noexcept : Value() {
  V_VT(&raw_) = VT_BOOL;
  V_BOOL(&raw_) = truth ? VARIANT_TRUE : VARIANT_FALSE;
}

Value::Value(StringView text) : Value() {
  V_BSTR(&raw_) = NewBstr(text);
  V_VT(&raw_) = VT_BSTR;
}

Value::Value(IDispatch* object) noexcept : Value() {
  if (object) object->AddRef();
  V_VT(&raw_) = VT_DISPATCH;
  V_DISPATCH(&raw_) = object;
}

Value::Value(const Variant& value) : Value() {
  using Narrow = std::numeric_limits<std::int32_t>;
  if (IsNull(value)) {
    V_VT(&raw_) = VT_NULL;
  } else if (const auto* whole = std::get_if<std::int64_t>(&value)) {
    const bool fits = *whole >= Narrow::min() && *whole <= Narrow::max();
    V_VT(&raw_) = fits ? VT_I4 : VT_I8;
    V_I8(&raw_) = *whole;  // little-endian: the first four bytes are the VT_I4 value
  } else if (const auto* fraction = std::get_if<double>(&value)) {
    V_VT(&raw_) = VT_R8;
    V_R8(&raw_) = *fraction;
  } else if (const auto* truth = std::get_if<bool>(&value)) {
    *this = Value(*truth);
  } else if (const auto* moment = std::get_if<DateTime>(&value)) {
    V_DATE(&raw_) = ToOleDate(*moment);
    V_VT(&raw_) = VT_DATE;
  } else {
    *this = Value(StringView(std::get<String>(value)));
  }
}

Value Value::Missing() noexcept {
  Value missing;
  V_VT(&missing.raw_) = VT_ERROR;
  V_ERROR(&missing.raw_) = DISP_E_PARAMNOTFOUND;
  return missing;
}

Value Value::Reference(Value& target) noexcept {
  Value reference;
  V_VT(&reference.raw_) = VT_VARIANT | VT_BYREF;
  V_VARIANTREF(&reference.raw_) = &target.raw_;
  return reference;
}

Value& Value::operator=(Value&& other) noexcept {
  std::swap(raw_, other.raw_);
  return *this;
}

std::optional<std::int64_t> Value::Whole() const {
  if (V_VT(&raw_) == VT_BOOL) return V_BOOL(&raw_) != VARIANT_FALSE ? 1 : 0;
  const auto text = V_VT(&raw_) == VT_BSTR ? std::optional(Text()) : CellTextOf(raw_);
  return text ? ParseInteger(*text) : std::nullopt;
}

String Value::Text() const {
  if (V_VT(&raw_) != VT_BSTR) return {};
  const BSTR text = V_BSTR(&raw_);
  return String(reinterpret_cast<const char16_t*>(text), SysStringLen(text));
}

}  // namespace ktrv::database::ado
