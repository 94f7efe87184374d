#pragma once

#include <windows.h>
#include <oleauto.h>

#include "windows/base/ComPtr.h"

namespace ktrv::windows {

/// Late binding of one dual interface through the type library in the DLL.
class TypeDispatch {
 public:
  /// \param coclass the class whose type IProvideClassInfo returns
  TypeDispatch(const IID& interfaceId, const CLSID& coclass);

  HRESULT GetTypeInfo(UINT index, ITypeInfo** type);
  HRESULT GetClassInfo(ITypeInfo** type);
  HRESULT GetIDsOfNames(LPOLESTR* names, UINT count, DISPID* ids);

  /// IDispatch::Invoke for `object`, which implements the interface.
  HRESULT Invoke(IDispatch* object, DISPID member, LCID locale, WORD flags, DISPPARAMS* passed,
                 VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument);

 private:
  HRESULT Load();
  HRESULT InvokeDefaultOf(const VARIANT& object, LCID locale, DISPPARAMS* passed, VARIANT* result,
                          EXCEPINFO* exception, UINT* wrongArgument);

  const IID& interfaceId_;
  const CLSID& coclass_;
  ComPtr<ITypeLib> library_;
  ComPtr<ITypeInfo> type_;
};

}  // namespace ktrv::windows
