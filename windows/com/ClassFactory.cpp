#include "windows/com/ClassFactory.h"

#include "windows/com/ClsMainObject.h"

namespace ktrv::windows {

STDMETHODIMP ClassFactory::QueryInterface(REFIID wanted, void** object) noexcept {
  if (!object) return E_POINTER;
  const bool known = wanted == IID_IUnknown || wanted == IID_IClassFactory;
  *object = known ? this : nullptr;
  if (!known) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) ClassFactory::AddRef() noexcept {
  return static_cast<ULONG>(InterlockedIncrement(&references_));
}

STDMETHODIMP_(ULONG) ClassFactory::Release() noexcept {
  const LONG left = InterlockedDecrement(&references_);
  if (left == 0) delete this;
  return static_cast<ULONG>(left);
}

STDMETHODIMP ClassFactory::CreateInstance(IUnknown* outer, REFIID wanted, void** object) noexcept {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (outer) return CLASS_E_NOAGGREGATION;
  HRESULT found = E_NOINTERFACE;
  const HRESULT made = Guarded(IID_IClassFactory, [&] {
    const ComPtr<ClsMainObject> instance(new ClsMainObject);
    found = instance->QueryInterface(wanted, object);
  });
  return FAILED(made) ? made : found;
}

STDMETHODIMP ClassFactory::LockServer(BOOL lock) noexcept {
  if (lock) {
    ServerLock::Add();
  } else {
    ServerLock::Remove();
  }
  return S_OK;
}

}  // namespace ktrv::windows
