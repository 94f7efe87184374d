#include "windows/com/TypeDispatch.h"

#include "windows/base/Module.h"
#include "windows/com/DispatchArguments.h"

namespace ktrv::windows {
namespace {

/// Owns the description of one function of a type.
class Function {
 public:
  /// Finds the member for the flags of a call. A method call also finds a property getter, because
  /// script engines cannot always tell them apart.
  Function(ITypeInfo& type, DISPID member, WORD flags) : type_(type) {
    if (flags & DISPATCH_METHOD) flags |= DISPATCH_PROPERTYGET;
    FUNCDESC* description = nullptr;
    for (UINT i = 0; SUCCEEDED(type.GetFuncDesc(i, &description)); ++i) {
      if (description->memid == member && (description->invkind & flags)) {
        description_ = description;
        return;
      }
      type.ReleaseFuncDesc(description);
    }
  }
  ~Function() {
    if (description_) type_.ReleaseFuncDesc(description_);
  }
  Function(const Function&) = delete;
  Function& operator=(const Function&) = delete;

  const FUNCDESC* Get() const { return description_; }

 private:
  ITypeInfo& type_;
  FUNCDESC* description_ = nullptr;
};

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
  const Function function(*type_.Get(), member, flags);
  if (!function.Get()) return DISP_E_MEMBERNOTFOUND;
  const FUNCDESC& description = *function.Get();

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
