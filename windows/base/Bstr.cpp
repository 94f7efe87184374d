#include "windows/base/Bstr.h"

#include <new>

namespace ktrv::windows {

BSTR NewBstr(StringView text) {
  const BSTR made = SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()),
                                      static_cast<UINT>(text.size()));
  if (!made) throw std::bad_alloc();
  return made;
}

}  // namespace ktrv::windows
