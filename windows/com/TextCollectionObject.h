#pragma once

#include <memory>

#include "KTRVAddressBook_h.h"
#include "common/TextCollection.h"
#include "windows/com/DualObject.h"

namespace ktrv::windows {

/// The COM object for a TextCollection.
class TextCollectionObject final : public DualObject<_TextCollection> {
 public:
  explicit TextCollectionObject(std::shared_ptr<TextCollection> texts);

  const std::shared_ptr<TextCollection>& Texts() const { return texts_; }

  STDMETHODIMP get_Item(VARIANT index, BSTR* text) noexcept override;
  STDMETHODIMP get_Count(long* number) noexcept override;
  STDMETHODIMP get__NewEnum(IUnknown** enumerator) noexcept override;

 private:
  std::shared_ptr<TextCollection> texts_;
};

}  // namespace ktrv::windows
