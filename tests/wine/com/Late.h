#pragma once

#include <memory>
#include <vector>

#include "tests/wine/component/Component.h"

namespace ktrv::tests {

/// A VARIANT that frees itself.
class Value {
 public:
  Value() { VariantInit(&variant_); }
  Value(const wchar_t* text) : Value() {
    V_VT(&variant_) = VT_BSTR;
    V_BSTR(&variant_) = SysAllocString(text);
  }
  Value(long number) : Value() {
    V_VT(&variant_) = VT_I4;
    V_I4(&variant_) = number;
  }
  Value(double number) : Value() {
    V_VT(&variant_) = VT_R8;
    V_R8(&variant_) = number;
  }
  /// As a script engine passes a variable.
  static Value Variable(VARIANT& variable) {
    Value value;
    V_VT(&value.variant_) = VT_BYREF | VT_VARIANT;
    V_VARIANTREF(&value.variant_) = &variable;
    return value;
  }
  static Value LeftOut() {
    Value value;
    V_VT(&value.variant_) = VT_ERROR;
    V_ERROR(&value.variant_) = DISP_E_PARAMNOTFOUND;
    return value;
  }
  Value(Value&& other) noexcept : variant_(other.variant_) { VariantInit(&other.variant_); }
  Value(const Value&) = delete;
  Value& operator=(const Value&) = delete;
  ~Value() { VariantClear(&variant_); }

  VARIANT& Get() { return variant_; }
  std::wstring Text() const {
    return V_VT(&variant_) == VT_BSTR && V_BSTR(&variant_) ? V_BSTR(&variant_) : L"(no text)";
  }

 private:
  VARIANT variant_;
};

/// One late-bound call, as script engines make it.
struct Late {
  explicit Late(IDispatch* object) : Object(object) {}

  template <class... Values>
  HRESULT Call(const wchar_t* name, Values&&... values) {
    Value array[sizeof...(Values) + 1] = {Value(std::forward<Values>(values))..., Value()};
    return Invoke(name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, array, sizeof...(Values));
  }
  HRESULT Put(const wchar_t* name, Value value) {
    return Invoke(name, DISPATCH_PROPERTYPUT, &value, 1);
  }
  /// \param names of the arguments, all of them named.
  HRESULT CallNamed(const wchar_t* name, std::vector<const wchar_t*> names, Value* values);
  HRESULT Invoke(const wchar_t* name, WORD flags, Value* values, UINT count);

  IDispatch* Object;
  Value Result;
  HRESULT Failure = S_OK;    ///< of EXCEPINFO
  std::wstring Description;  ///< of EXCEPINFO
  std::wstring Source;       ///< of EXCEPINFO
  UINT WrongArgument = 999;

 private:
  HRESULT Invoke(DISPID member, WORD flags, DISPPARAMS& passed);
};

}  // namespace ktrv::tests
