#include "windows/com/ApartmentWatch.h"

#include "windows/com/ThreadSession.h"

namespace ktrv::windows {

STDMETHODIMP ApartmentWatch::QueryInterface(REFIID wanted, void** object) noexcept {
  if (!object) return E_POINTER;
  const bool known = wanted == IID_IUnknown || wanted == IID_IInitializeSpy;
  *object = known ? this : nullptr;
  if (!known) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) ApartmentWatch::AddRef() noexcept {
  return static_cast<ULONG>(InterlockedIncrement(&references_));
}

STDMETHODIMP_(ULONG) ApartmentWatch::Release() noexcept {
  const LONG left = InterlockedDecrement(&references_);
  if (left == 0) delete this;
  return static_cast<ULONG>(left);
}

STDMETHODIMP ApartmentWatch::PreUninitialize(DWORD uses) noexcept {
  if (uses == 1) ThreadSession::EndCurrent();
  return S_OK;
}

}  // namespace ktrv::windows
