#pragma once

#include <windows.h>
#include <oleauto.h>

#include <memory>

#include "common/TextCollection.h"
#include "windows/com/Server.h"

namespace ktrv::windows {

/// Enumerates the texts of a collection, for "For Each". Includes texts that are added meanwhile.
/// Created with a refcount of 1.
class TextEnumerator final : public IEnumVARIANT {
 public:
  explicit TextEnumerator(std::shared_ptr<TextCollection> texts, std::int64_t given = 0);
  TextEnumerator(const TextEnumerator&) = delete;
  TextEnumerator& operator=(const TextEnumerator&) = delete;

  STDMETHODIMP QueryInterface(REFIID wanted, void** object) noexcept override;
  STDMETHODIMP_(ULONG) AddRef() noexcept override;
  STDMETHODIMP_(ULONG) Release() noexcept override;
  STDMETHODIMP Next(ULONG wanted, VARIANT* values, ULONG* fetched) noexcept override;
  STDMETHODIMP Skip(ULONG number) noexcept override;
  STDMETHODIMP Reset() noexcept override;
  STDMETHODIMP Clone(IEnumVARIANT** copy) noexcept override;

 private:
  ~TextEnumerator() = default;

  ServerLock lock_;
  LONG references_ = 1;
  std::shared_ptr<TextCollection> texts_;
  std::int64_t given_;
};

}  // namespace ktrv::windows
