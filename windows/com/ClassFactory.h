#pragma once

#include <windows.h>

#include <unknwn.h>

#include "windows/com/Server.h"

namespace ktrv::windows {

/// Creates clsMain objects. Created with a refcount of 1.
class ClassFactory final : public IClassFactory {
 public:
  ClassFactory() = default;
  ClassFactory(const ClassFactory&) = delete;
  ClassFactory& operator=(const ClassFactory&) = delete;

  STDMETHODIMP QueryInterface(REFIID wanted, void** object) noexcept override;
  STDMETHODIMP_(ULONG) AddRef() noexcept override;
  STDMETHODIMP_(ULONG) Release() noexcept override;
  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID wanted, void** object) noexcept override;
  STDMETHODIMP LockServer(BOOL lock) noexcept override;

 private:
  ~ClassFactory() = default;

  ServerLock lock_;
  LONG references_ = 1;
};

}  // namespace ktrv::windows
