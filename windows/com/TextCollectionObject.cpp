#include "windows/com/TextCollectionObject.h"

#include <utility>

#include "windows/base/Bstr.h"
#include "windows/com/TextEnumerator.h"

namespace ktrv::windows {
namespace {

/// \throws Error TypeMismatch or Overflow
LONG NumberOf(const VARIANT& index) {
  VARIANT number;
  VariantInit(&number);
  const HRESULT changed = VariantChangeType(&number, const_cast<VARIANT*>(&index), 0, VT_I4);
  if (changed == DISP_E_OVERFLOW) throw Error(ErrorNumber::Overflow);
  if (FAILED(changed)) throw Error(ErrorNumber::TypeMismatch);
  return V_I4(&number);
}

BSTR ItemOf(const TextCollection& texts, const VARIANT& index) {
  if (V_VT(&index) == (VT_BYREF | VT_VARIANT)) return ItemOf(texts, *V_VARIANTREF(&index));
  if (V_VT(&index) == VT_BSTR) return NewBstr(texts.Item(TextOf(V_BSTR(&index))));
  if (V_VT(&index) == (VT_BYREF | VT_BSTR)) return NewBstr(texts.Item(TextOf(*V_BSTRREF(&index))));
  return NewBstr(texts.Item(std::int64_t{NumberOf(index)}));
}

}  // namespace

TextCollectionObject::TextCollectionObject(std::shared_ptr<TextCollection> texts)
    : DualObject(__uuidof(::TextCollection)), texts_(std::move(texts)) {}

STDMETHODIMP TextCollectionObject::get_Item(VARIANT index, BSTR* text) noexcept {
  return Give(text, [&] { return ItemOf(*texts_, index); });
}

STDMETHODIMP TextCollectionObject::get_Count(long* number) noexcept {
  return Give(number, [&] { return long{texts_->Count()}; });
}

STDMETHODIMP TextCollectionObject::get__NewEnum(IUnknown** enumerator) noexcept {
  return Give(enumerator, [&]() -> IUnknown* { return new TextEnumerator(texts_); });
}

}  // namespace ktrv::windows
