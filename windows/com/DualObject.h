#pragma once

#include <windows.h>
#include <ocidl.h>
#include <oleauto.h>

#include "windows/com/Failure.h"
#include "windows/com/Server.h"
#include "windows/com/TypeDispatch.h"

namespace ktrv::windows {

/// Base of all objects with a dual interface: refcount, late binding through the type library,
/// support for error information and class information. Created with a refcount of 1; lives in one
/// apartment.
template <class Interface>
class DualObject : public Interface, public ISupportErrorInfo, public IProvideClassInfo {
 public:
  DualObject(const DualObject&) = delete;
  DualObject& operator=(const DualObject&) = delete;

  STDMETHODIMP QueryInterface(REFIID wanted, void** object) noexcept override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (wanted == IID_IUnknown || wanted == IID_IDispatch || wanted == __uuidof(Interface)) {
      *object = static_cast<Interface*>(this);
    } else if (wanted == IID_ISupportErrorInfo) {
      *object = static_cast<ISupportErrorInfo*>(this);
    } else if (wanted == IID_IProvideClassInfo) {
      *object = static_cast<IProvideClassInfo*>(this);
    } else {
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }

  STDMETHODIMP_(ULONG) AddRef() noexcept override {
    return static_cast<ULONG>(InterlockedIncrement(&references_));
  }

  STDMETHODIMP_(ULONG) Release() noexcept override {
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0) {
      // Code run by the destructor may AddRef and Release; guards against a second delete.
      references_ = 1;
      delete this;
    }
    return static_cast<ULONG>(left);
  }

  STDMETHODIMP GetTypeInfoCount(UINT* count) noexcept override {
    if (!count) return E_POINTER;
    *count = 1;
    return S_OK;
  }

  STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** type) noexcept override {
    return Answer([&] { return dispatch_.GetTypeInfo(index, type); });
  }

  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                             DISPID* ids) noexcept override {
    return Answer([&] { return dispatch_.GetIDsOfNames(names, count, ids); });
  }

  STDMETHODIMP Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* passed,
                      VARIANT* result, EXCEPINFO* exception,
                      UINT* wrongArgument) noexcept override {
    if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    // The call uses dispatch_ until it returns. The host may release the object while a dialog is
    // shown.
    const auto self = ComPtr<Interface>::Share(this);
    return Answer([&] {
      return dispatch_.Invoke(this, member, locale, flags, passed, result, exception,
                              wrongArgument);
    });
  }

  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID wanted) noexcept override {
    return wanted == __uuidof(Interface) ? S_OK : S_FALSE;
  }

  STDMETHODIMP GetClassInfo(ITypeInfo** type) noexcept override {
    return Answer([&] { return dispatch_.GetClassInfo(type); });
  }

 protected:
  explicit DualObject(const CLSID& coclass) : dispatch_(__uuidof(Interface), coclass) {}
  virtual ~DualObject() = default;

  /// Runs a method with an out parameter. Checks and clears it first. Keeps the object alive until
  /// the method returns, because the host may release it while a dialog is shown.
  template <class Out, class Body>
  HRESULT Give(Out* out, Body&& body) noexcept {
    if (!out) return E_POINTER;
    *out = Out{};
    const auto self = ComPtr<Interface>::Share(this);
    return Guarded(__uuidof(Interface), [&] { *out = body(); });
  }

  /// Runs a method without an out parameter.
  template <class Body>
  HRESULT Run(Body&& body) noexcept {
    const auto self = ComPtr<Interface>::Share(this);
    return Guarded(__uuidof(Interface), std::forward<Body>(body));
  }

 private:
  template <class Body>
  static HRESULT Answer(Body&& body) noexcept {
    try {
      return body();
    } catch (...) {
      return ResultOf(Error::Current().Number());
    }
  }

  ServerLock lock_;
  LONG references_ = 1;
  TypeDispatch dispatch_;
};

}  // namespace ktrv::windows
