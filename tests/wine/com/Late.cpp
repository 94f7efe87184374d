#include "tests/wine/com/Late.h"

#include <algorithm>

namespace ktrv::tests {
namespace {

std::wstring Take(BSTR text) {
  std::wstring taken(text ? text : L"");
  SysFreeString(text);
  return taken;
}

}  // namespace

HRESULT Late::Invoke(const wchar_t* name, WORD flags, Value* values, UINT count) {
  DISPID member = 0;
  auto* spelled = const_cast<wchar_t*>(name);
  const HRESULT found = Object->GetIDsOfNames(IID_NULL, &spelled, 1, LOCALE_USER_DEFAULT, &member);
  if (FAILED(found)) return found;
  std::vector<VARIANT> backwards;
  for (UINT i = count; i > 0; --i) backwards.push_back(values[i - 1].Get());
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS passed{backwards.data(), nullptr, count, 0};
  if (flags == DISPATCH_PROPERTYPUT) {
    passed.rgdispidNamedArgs = &put;
    passed.cNamedArgs = 1;
  }
  return Invoke(member, flags, passed);
}

HRESULT Late::CallNamed(const wchar_t* name, std::vector<const wchar_t*> names, Value* values) {
  names.insert(names.begin(), name);
  std::vector<DISPID> ids(names.size());
  const HRESULT found =
      Object->GetIDsOfNames(IID_NULL, const_cast<wchar_t**>(names.data()),
                            static_cast<UINT>(names.size()), LOCALE_USER_DEFAULT, ids.data());
  if (FAILED(found)) return found;
  const auto count = static_cast<UINT>(names.size() - 1);
  std::vector<VARIANT> inOrder;
  for (UINT i = 0; i < count; ++i) inOrder.push_back(values[i].Get());
  DISPPARAMS passed{inOrder.data(), ids.data() + 1, count, count};
  return Invoke(ids[0], DISPATCH_METHOD, passed);
}

HRESULT Late::Invoke(DISPID member, WORD flags, DISPPARAMS& passed) {
  VariantClear(&Result.Get());
  EXCEPINFO exception{};
  const HRESULT result = Object->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, flags, &passed,
                                        &Result.Get(), &exception, &WrongArgument);
  Failure = exception.scode;
  Description = Take(exception.bstrDescription);
  Source = Take(exception.bstrSource);
  SysFreeString(exception.bstrHelpFile);
  return result;
}

}  // namespace ktrv::tests
