#include "tests/scripthost/Value.h"

#include <new>

#include "tests/scripthost/ScriptFailure.h"

namespace ktrv::scripthost {
namespace {

// The header of this compiler says nothing of const for sources that are only read.
VARIANT* Readable(const VARIANT& source) {
  return const_cast<VARIANT*>(&source);
}

Value Converted(const VARIANT& source, VARTYPE type) {
  VARIANT converted;
  VariantInit(&converted);
  if (FAILED(VariantChangeType(&converted, Readable(source), VARIANT_ALPHABOOL, type))) {
    throw ScriptFailure{L"Type mismatch"};
  }
  Value value(converted);
  VariantClear(&converted);
  return value;
}

}  // namespace

Value::Value(std::wstring_view text) : Value() {
  variant_.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  if (variant_.bstrVal == nullptr) {
    throw std::bad_alloc();
  }
  variant_.vt = VT_BSTR;
}

Value::Value(LONG number) noexcept : Value() {
  variant_.vt = VT_I4;
  variant_.lVal = number;
}

Value::Value(bool flag) noexcept : Value() {
  variant_.vt = VT_BOOL;
  variant_.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
}

Value::Value(IDispatch* object) noexcept : Value() {
  variant_.vt = VT_DISPATCH;
  variant_.pdispVal = object;
  if (object != nullptr) {
    object->AddRef();
  }
}

Value::Value(const VARIANT& source) : Value() {
  if (FAILED(VariantCopyInd(&variant_, Readable(source)))) {
    throw std::bad_alloc();
  }
}

Value& Value::operator=(Value&& other) noexcept {
  if (this != &other) {
    VariantClear(&variant_);
    variant_ = other.Release();
  }
  return *this;
}

std::wstring Value::Text() const {
  if (variant_.vt == VT_NULL || variant_.vt == VT_EMPTY) {
    return {};
  }
  if (variant_.vt == VT_BSTR) {
    return {variant_.bstrVal, SysStringLen(variant_.bstrVal)};
  }
  return Converted(variant_, VT_BSTR).Text();
}

LONG Value::Number() const {
  if (variant_.vt == VT_I4) {
    return variant_.lVal;
  }
  return Converted(variant_, VT_I4).Number();
}

VARIANT Value::Release() noexcept {
  const VARIANT content = variant_;
  VariantInit(&variant_);
  return content;
}

}  // namespace ktrv::scripthost
