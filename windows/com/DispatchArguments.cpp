#include "windows/com/DispatchArguments.h"

#include <algorithm>

#include "windows/base/ComPtr.h"

namespace ktrv::windows {
namespace {

constexpr UINT kNone = static_cast<UINT>(-1);

bool IsLeftOut(const VARIANT& argument) {
  return V_VT(&argument) == VT_ERROR && V_ERROR(&argument) == DISP_E_PARAMNOTFOUND;
}

const VARIANT& WithoutReferences(const VARIANT& argument) {
  const VARIANT* value = &argument;
  while (V_VT(value) == (VT_BYREF | VT_VARIANT)) value = V_VARIANTREF(value);
  return *value;
}

/// The type of a parameter's value; VT_I4 for an enumeration.
VARTYPE ValueType(ITypeInfo& type, const TYPEDESC& description) {
  const TYPEDESC& value = description.vt == VT_PTR ? *description.lptdesc : description;
  if (value.vt != VT_USERDEFINED) return value.vt;
  ComPtr<ITypeInfo> named;
  TYPEATTR* attributes = nullptr;
  if (FAILED(type.GetRefTypeInfo(value.hreftype, named.Out())) ||
      FAILED(named->GetTypeAttr(&attributes))) {
    return VT_VARIANT;
  }
  const bool enumeration = attributes->typekind == TKIND_ENUM;
  named->ReleaseTypeAttr(attributes);
  return enumeration ? static_cast<VARTYPE>(VT_I4) : static_cast<VARTYPE>(VT_VARIANT);
}

/// Maps each parameter to the index of its argument in `passed`, or kNone.
/// \return false for an argument without a parameter or a parameter with two arguments
bool Place(const DISPPARAMS& passed, std::vector<UINT>& places) {
  if (passed.cNamedArgs > passed.cArgs) return false;
  const auto put = [&](std::size_t parameter, UINT argument) {
    if (parameter >= places.size() || places[parameter] != kNone) return false;
    places[parameter] = argument;
    return true;
  };
  const UINT unnamed = passed.cArgs - passed.cNamedArgs;
  for (UINT i = 0; i < unnamed; ++i) {
    if (!put(i, passed.cArgs - 1 - i)) return false;
  }
  for (UINT i = 0; i < passed.cNamedArgs; ++i) {
    const DISPID name = passed.rgdispidNamedArgs[i];
    const auto parameter =
        name == DISPID_PROPERTYPUT ? places.size() - 1 : static_cast<std::size_t>(name);
    if (!put(parameter, i)) return false;
  }
  return true;
}

}  // namespace

DispatchArguments::DispatchArguments(ITypeInfo& type, const FUNCDESC& function, LCID locale)
    : type_(type),
      function_(function),
      locale_(locale),
      values_(static_cast<std::size_t>(function.cParams)),
      passed_(values_.size()) {
  for (VARIANT& value : values_) VariantInit(&value);
}

DispatchArguments::~DispatchArguments() {
  for (VARIANT& value : values_) VariantClear(&value);
}

HRESULT DispatchArguments::Take(const DISPPARAMS& passed, UINT* wrongArgument) {
  std::vector<UINT> places(values_.size(), kNone);
  if (!Place(passed, places)) return DISP_E_BADPARAMCOUNT;
  for (SHORT parameter = 0; parameter < function_.cParams; ++parameter) {
    const UINT place = places[static_cast<std::size_t>(parameter)];
    const VARIANT* argument = place == kNone ? nullptr : &WithoutReferences(passed.rgvarg[place]);
    const HRESULT result =
        argument && !IsLeftOut(*argument) ? Convert(*argument, parameter) : FillIn(parameter);
    if (FAILED(result)) {
      if (wrongArgument && place != kNone) *wrongArgument = place;
      return result;
    }
    Pass(parameter);
  }
  std::reverse(passed_.begin(), passed_.end());
  taken_.rgvarg = passed_.data();
  taken_.cArgs = static_cast<UINT>(passed_.size());
  if (function_.invkind == INVOKE_PROPERTYPUT) {
    taken_.rgdispidNamedArgs = &propertyPut_;
    taken_.cNamedArgs = 1;
  }
  return S_OK;
}

HRESULT DispatchArguments::Convert(const VARIANT& argument, SHORT parameter) {
  VARIANT& value = values_[static_cast<std::size_t>(parameter)];
  const HRESULT copied = VariantCopyInd(&value, const_cast<VARIANT*>(&argument));
  if (FAILED(copied)) return copied;
  const VARTYPE wanted = ValueType(type_, function_.lprgelemdescParam[parameter].tdesc);
  if (wanted == VT_VARIANT || V_VT(&value) == wanted) return S_OK;
  return VariantChangeTypeEx(&value, &value, locale_, VARIANT_ALPHABOOL, wanted);
}

HRESULT DispatchArguments::FillIn(SHORT parameter) {
  const ELEMDESC& description = function_.lprgelemdescParam[parameter];
  const USHORT flags = description.paramdesc.wParamFlags;
  if (flags & PARAMFLAG_FHASDEFAULT) {
    return Convert(description.paramdesc.pparamdescex->varDefaultValue, parameter);
  }
  if (!(flags & PARAMFLAG_FOPT)) return DISP_E_PARAMNOTOPTIONAL;
  VARIANT nothing;
  VariantInit(&nothing);
  return Convert(nothing, parameter);
}

void DispatchArguments::Pass(SHORT parameter) {
  const auto index = static_cast<std::size_t>(parameter);
  passed_[index] = values_[index];  // shallow copy; values_ remains the owner
  if (function_.lprgelemdescParam[parameter].tdesc.vt != VT_PTR) return;
  V_VT(&passed_[index]) = static_cast<VARTYPE>(V_VT(&values_[index]) | VT_BYREF);
  // All members of a variant's union have the same address.
  V_BYREF(&passed_[index]) = &V_BYREF(&values_[index]);
}

}  // namespace ktrv::windows
