#include "windows/com/TextEnumerator.h"

#include <algorithm>
#include <utility>

#include "windows/base/Bstr.h"
#include "windows/com/Failure.h"

namespace ktrv::windows {

TextEnumerator::TextEnumerator(std::shared_ptr<TextCollection> texts, std::int64_t given)
    : texts_(std::move(texts)), given_(given) {}

STDMETHODIMP TextEnumerator::QueryInterface(REFIID wanted, void** object) noexcept {
  if (!object) return E_POINTER;
  const bool known = wanted == IID_IUnknown || wanted == IID_IEnumVARIANT;
  *object = known ? static_cast<IEnumVARIANT*>(this) : nullptr;
  if (!known) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) TextEnumerator::AddRef() noexcept {
  return static_cast<ULONG>(InterlockedIncrement(&references_));
}

STDMETHODIMP_(ULONG) TextEnumerator::Release() noexcept {
  const LONG left = InterlockedDecrement(&references_);
  if (left == 0) delete this;
  return static_cast<ULONG>(left);
}

STDMETHODIMP TextEnumerator::Next(ULONG wanted, VARIANT* values, ULONG* fetched) noexcept {
  if (fetched) *fetched = 0;
  if (!values || (!fetched && wanted != 1)) return E_POINTER;
  ULONG count = 0;
  const HRESULT result = Guarded(IID_IEnumVARIANT, [&] {
    for (; count < wanted && given_ < texts_->Count(); ++count, ++given_) {
      const BSTR text = NewBstr(texts_->Item(given_ + 1));
      VariantInit(&values[count]);
      V_VT(&values[count]) = VT_BSTR;
      V_BSTR(&values[count]) = text;
    }
  });
  if (fetched) *fetched = count;
  if (FAILED(result)) return result;
  return count == wanted ? S_OK : S_FALSE;
}

STDMETHODIMP TextEnumerator::Skip(ULONG number) noexcept {
  const std::int64_t left = texts_->Count() - given_;
  given_ += std::min<std::int64_t>(left, number);
  return static_cast<std::int64_t>(number) <= left ? S_OK : S_FALSE;
}

STDMETHODIMP TextEnumerator::Reset() noexcept {
  given_ = 0;
  return S_OK;
}

STDMETHODIMP TextEnumerator::Clone(IEnumVARIANT** copy) noexcept {
  if (!copy) return E_POINTER;
  *copy = nullptr;
  return Guarded(IID_IEnumVARIANT, [&] { *copy = new TextEnumerator(texts_, given_); });
}

}  // namespace ktrv::windows
