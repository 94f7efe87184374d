#include "database/ado/Object.h"

#include <objbase.h>

#include <cstdio>
#include <utility>
#include <vector>

namespace ktrv::database::ado {
namespace {

constexpr StringView kSource = u"ADODB";

String CodeText(HRESULT code) {
  char digits[16];
  std::snprintf(digits, sizeof digits, "0x%08lX", static_cast<unsigned long>(code));
  return FromUtf8(digits);
}

/// The EXCEPINFO of a failed call; frees its texts.
class Exception {
 public:
  Exception() = default;
  ~Exception() {
    SysFreeString(raw_.bstrSource);
    SysFreeString(raw_.bstrDescription);
    SysFreeString(raw_.bstrHelpFile);
  }
  Exception(const Exception&) = delete;
  Exception& operator=(const Exception&) = delete;

  EXCEPINFO* Out() { return &raw_; }

  Error AsError(HRESULT code, const wchar_t* name) {
    if (code != DISP_E_EXCEPTION) return WithoutReason(code, name);
    if (raw_.pfnDeferredFillIn) raw_.pfnDeferredFillIn(&raw_);
    const HRESULT own = raw_.scode != 0 ? raw_.scode : HRESULT{raw_.wCode};
    if (SysStringLen(raw_.bstrDescription) == 0) return WithoutReason(own, name);
    const String source = TextOf(raw_.bstrSource);
    return Error(NumberOf(own), TextOf(raw_.bstrDescription),
                 source.empty() ? String(kSource) : source);
  }

 private:
  static String TextOf(BSTR text) {
    return String(reinterpret_cast<const char16_t*>(text), SysStringLen(text));
  }

  static Error WithoutReason(HRESULT code, const wchar_t* name) {
    return Error(
        NumberOf(code),
        String(reinterpret_cast<const char16_t*>(name)) + u" failed with code " + CodeText(code),
        String(kSource));
  }

  EXCEPINFO raw_ = {};
};

}  // namespace

std::int32_t NumberOf(HRESULT code) noexcept {
  if (code < 0 && HRESULT_FACILITY(code) == FACILITY_CONTROL) return HRESULT_CODE(code);
  return code;
}

bool IsUnsupported(const Error& failure) noexcept {
  return failure.Number() == ErrorNumber::NotUpdatable || failure.Number() == E_NOTIMPL;
}

Object Object::Create(const wchar_t* programId) {
  CLSID classId;
  Object made;
  HRESULT result = CLSIDFromProgID(programId, &classId);
  if (SUCCEEDED(result)) {
    result = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                              reinterpret_cast<void**>(&made.object_));
  }
  if (FAILED(result)) {
    throw Error(ErrorNumber::DriverFailure,
                u"ADO is not available on this machine: " +
                    String(reinterpret_cast<const char16_t*>(programId)) +
                    u" cannot be made, code " + CodeText(result),
                String(kSource));
  }
  return made;
}

Object::Object(const Value& value) noexcept {
  const VARIANT& raw = value.Raw();
  IUnknown* found = nullptr;
  if (V_VT(&raw) == VT_DISPATCH || V_VT(&raw) == VT_UNKNOWN) found = V_UNKNOWN(&raw);
  if (found) found->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&object_));
}

Object::Object(Object&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}

Object& Object::operator=(Object&& other) noexcept {
  std::swap(object_, other.object_);
  return *this;
}

void Object::Release() noexcept {
  if (IDispatch* const object = std::exchange(object_, nullptr)) object->Release();
}

Value Object::Get(const wchar_t* property, Arguments arguments) const {
  return Invoke(property, DISPATCH_PROPERTYGET, arguments);
}

Object Object::Part(const wchar_t* property, Arguments arguments) const {
  return Object(Get(property, arguments));
}

std::int64_t Object::GetWhole(const wchar_t* property) const {
  return Get(property).Whole().value_or(0);
}

void Object::Put(const wchar_t* property, const Value& value) const {
  Invoke(property, DISPATCH_PROPERTYPUT, {&value});
}

void Object::PutReference(const wchar_t* property, const Object& value) const {
  const Value reference = value.Reference();
  Invoke(property, DISPATCH_PROPERTYPUTREF, {&reference});
}

Value Object::Call(const wchar_t* method, Arguments arguments) const {
  return Invoke(method, DISPATCH_METHOD, arguments);
}

Value Object::Invoke(const wchar_t* name, WORD kind, Arguments arguments) const {
  if (!object_) throw Error(ErrorNumber::ObjectNotSet, u"Object variable not set", String(kSource));
  auto* names = const_cast<LPOLESTR>(name);
  DISPID member = DISPID_UNKNOWN;
  HRESULT code = object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_INVARIANT, &member);
  Exception exception;
  if (FAILED(code)) throw exception.AsError(code, name);
  // In reverse order, as in DISPPARAMS. Shallow copies; the callers keep ownership.
  std::vector<VARIANT> passed;
  for (auto argument = std::rbegin(arguments); argument != std::rend(arguments); ++argument) {
    passed.push_back((*argument)->Raw());
  }
  DISPPARAMS parameters = {passed.data(), nullptr, static_cast<UINT>(passed.size()), 0};
  DISPID put = DISPID_PROPERTYPUT;
  if (kind == DISPATCH_PROPERTYPUT || kind == DISPATCH_PROPERTYPUTREF) {
    parameters.rgdispidNamedArgs = &put;
    parameters.cNamedArgs = 1;
  }
  Value result;
  code = object_->Invoke(member, IID_NULL, LOCALE_INVARIANT, kind, &parameters, &result.Raw(),
                         exception.Out(), nullptr);
  if (FAILED(code)) throw exception.AsError(code, name);
  return result;
}

}  // namespace ktrv::database::ado
