#include "windows/com/TypeDispatch.h"

#include "common/ScopeExit.h"
#include "windows/base/Module.h"
#include "windows/com/DispatchArguments.h"

namespace ktrv::windows {
namespace {

/// Finds the member for the flags of a call. A method call also finds a property getter, because
/// script engines cannot always tell them apart. \return null if there is none; else release it
FUNCDESC* FindFunction(ITypeInfo& type, DISPID member, WORD flags) {
  if (flags & DISPATCH_METHOD) flags |= DISPATCH_PROPERTYGET;
  FUNCDESC* description = nullptr;
  for (UINT i = 0; SUCCEEDED(type.GetFuncDesc(i, &description)); ++i) {
    if (description->memid == member && (description->invkind & flags)) return description;
    type.ReleaseFuncDesc(description);
  }
  return nullptr;
}

}  // namespace

TypeDispatch::TypeDispatch(const IID& interfaceId, const CLSID& coclass)
    : interfaceId_(interfaceId), coclass_(coclass) {}

HRESULT TypeDispatch::Load() {
  if (type_) return S_OK;
  const HRESULT loaded = LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, library_.Out());
  if (FAILED(loaded)) return loaded;
  return library_->GetTypeInfoOfGuid(interfaceId_, type_.Out());
}

HRESULT TypeDispatch::GetTypeInfo(UINT index, ITypeInfo** type) {
  if (!type) return E_POINTER;
  *type = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  const HRESULT loaded = Load();
  if (FAILED(loaded)) return loaded;
  *type = ComPtr<ITypeInfo>::Share(type_.Get()).Release();
  return S_OK;
}

HRESULT TypeDispatch::GetClassInfo(ITypeInfo** type) {
  if (!type) return E_POINTER;
  *type = nullptr;
  const HRESULT loaded = Load();
  return FAILED(loaded) ? loaded : library_->GetTypeInfoOfGuid(coclass_, type);
}

HRESULT TypeDispatch::GetIDsOfNames(LPOLESTR* names, UINT count, DISPID* ids) {
  if (!names || !ids) return E_POINTER;
  const HRESULT loaded = Load();
  return FAILED(loaded) ? loaded : type_->GetIDsOfNames(names, count, ids);
}

HRESULT TypeDispatch::Invoke(IDispatch* object, DISPID member, LCID locale, WORD flags,
                             DISPPARAMS* passed, VARIANT* result, EXCEPINFO* exception,
                             UINT* wrongArgument) {
  if (!passed) return E_POINTER;
  const HRESULT loaded = Load();
  if (FAILED(loaded)) return loaded;
  FUNCDESC* const function = FindFunction(*type_.Get(), member, flags);
  if (!function) return DISP_E_MEMBERNOTFOUND;
  const ScopeExit released([&] { type_->ReleaseFuncDesc(function); });
  const FUNCDESC& description = *function;

  if (description.invkind == INVOKE_PROPERTYGET && description.cParams == 0 && passed->cArgs > 0) {
    // object.Property(index): the arguments are for the default member of the property's value.
    VARIANT value;
    VariantInit(&value);
    DISPPARAMS none{};
    const HRESULT got =
        type_->Invoke(object, member, DISPATCH_PROPERTYGET, &none, &value, exception, nullptr);
    const HRESULT invoked =
        FAILED(got) ? got
                    : InvokeDefaultOf(value, locale, passed, result, exception, wrongArgument);
    VariantClear(&value);
    return invoked;
  }

  DispatchArguments arguments(*type_.Get(), description, locale);
  const HRESULT taken = arguments.Take(*passed, wrongArgument);
  if (FAILED(taken)) return taken;
  return type_->Invoke(object, member, static_cast<WORD>(description.invkind), arguments.Taken(),
                       result, exception, wrongArgument);
}

HRESULT TypeDispatch::InvokeDefaultOf(const VARIANT& object, LCID locale, DISPPARAMS* passed,
                                      VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) {
  if (V_VT(&object) != VT_DISPATCH || !V_DISPATCH(&object)) return DISP_E_BADPARAMCOUNT;
  return V_DISPATCH(&object)->Invoke(DISPID_VALUE, IID_NULL, locale,
                                     DISPATCH_METHOD | DISPATCH_PROPERTYGET, passed, result,
                                     exception, wrongArgument);
}

}  // namespace ktrv::windows
