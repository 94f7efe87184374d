#pragma once

#include <windows.h>
#include <oleauto.h>

#include "common/Text.h"

namespace ktrv::windows {

/// The text of a BSTR, valid as long as it; a null one is the empty text.
inline StringView TextOf(BSTR text) {
  return {reinterpret_cast<const char16_t*>(text), SysStringLen(text)};
}

/// The text of a by-reference argument that a caller in another language may leave out as null.
inline StringView TextOf(const BSTR* text) {
  return text ? TextOf(*text) : StringView();
}

/// A new BSTR for the caller to free. \throws std::bad_alloc
BSTR NewBstr(StringView text);

}  // namespace ktrv::windows
