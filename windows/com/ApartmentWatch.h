#pragma once

#include <windows.h>

#include <objidl.h>

namespace ktrv::windows {

/// Ends the thread's session when the host uninitialises COM on the thread. This is the last point
/// at which windows and connections can be closed safely. Created with a refcount of 1.
class ApartmentWatch final : public IInitializeSpy {
 public:
  STDMETHODIMP QueryInterface(REFIID wanted, void** object) noexcept override;
  STDMETHODIMP_(ULONG) AddRef() noexcept override;
  STDMETHODIMP_(ULONG) Release() noexcept override;
  STDMETHODIMP PreInitialize(DWORD, DWORD) noexcept override { return S_OK; }
  STDMETHODIMP PostInitialize(HRESULT result, DWORD, DWORD) noexcept override { return result; }
  STDMETHODIMP PreUninitialize(DWORD uses) noexcept override;
  STDMETHODIMP PostUninitialize(DWORD) noexcept override { return S_OK; }

 private:
  LONG references_ = 1;
};

}  // namespace ktrv::windows
