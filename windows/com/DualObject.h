#pragma once

#include <windows.h>
#include <ocidl.h>
#include <oleauto.h>

#include "windows/com/Failure.h"
#include "windows/com/Server.h"
#include "windows/com/TypeDispatch.h"

namespace ktrv::windows {

/// What every object with a dual interface does: counting references, late binding by the type
/// library, telling that its errors carry information. Made with one reference, the maker's; lives
/// in one apartment.
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
      // What the end of the object calls may take a reference and give it back.
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
    // The call needs this object's description of itself until it has returned, and the host may
    // release the object while a dialog is shown.
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

  /// Runs a method that gives a value: the out pointer is checked and cleared first, and the object
  /// lives until the method ends, though the host may release it while a dialog is shown.
  template <class Out, class Body>
  HRESULT Give(Out* out, Body&& body) noexcept {
    if (!out) return E_POINTER;
    *out = Out{};
    const auto self = ComPtr<Interface>::Share(this);
    return Guarded(__uuidof(Interface), [&] { *out = body(); });
  }

  /// Runs a method that gives none.
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
