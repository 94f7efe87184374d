#include "tests/adoserver/Arguments.h"

#include "tests/adoserver/Refusal.h"

namespace ktrv::adoserver {

VARIANT* Arguments::Passed(UINT index) const {
  return index < passed_.cArgs ? &passed_.rgvarg[passed_.cArgs - 1 - index] : nullptr;
}

bool Arguments::Has(UINT index) const {
  const VARIANT* const passed = Passed(index);
  const bool missing =
      passed && V_VT(passed) == VT_ERROR && V_ERROR(passed) == DISP_E_PARAMNOTFOUND;
  return passed && !missing;
}

const VARIANT& Arguments::At(UINT index) const {
  const VARIANT& passed = *Passed(index);
  return V_VT(&passed) == (VT_VARIANT | VT_BYREF) ? *V_VARIANTREF(&passed) : passed;
}

String Arguments::Text(UINT index) const {
  if (!Has(index) || V_VT(&At(index)) != VT_BSTR) throw Refusal(ErrorNumber::InvalidArgument);
  const BSTR text = V_BSTR(&At(index));
  return String(reinterpret_cast<const char16_t*>(text), SysStringLen(text));
}

std::int32_t Arguments::Number(UINT index) const {
  if (!Has(index)) throw Refusal(ErrorNumber::InvalidArgument);
  if (V_VT(&At(index)) == VT_I4) return V_I4(&At(index));
  if (V_VT(&At(index)) == VT_I2) return V_I2(&At(index));
  throw Refusal(ErrorNumber::InvalidArgument);
}

std::int32_t Arguments::Number(UINT index, std::int32_t otherwise) const {
  return Has(index) ? Number(index) : otherwise;
}

IDispatch* Arguments::Object(UINT index) const {
  if (!Has(index) || V_VT(&At(index)) != VT_DISPATCH) throw Refusal(ErrorNumber::InvalidArgument);
  return V_DISPATCH(&At(index));
}

void Arguments::Return(UINT index, LONG number) const {
  if (!Has(index)) return;
  const VARIANT* const passed = Passed(index);
  if (V_VT(passed) != (VT_VARIANT | VT_BYREF)) throw Refusal(ErrorNumber::InvalidArgument);
  VARIANT* const target = V_VARIANTREF(passed);
  VariantClear(target);
  V_VT(target) = VT_I4;
  V_I4(target) = number;
}

}  // namespace ktrv::adoserver
