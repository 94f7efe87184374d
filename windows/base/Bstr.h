#pragma once

#include <windows.h>
#include <oleauto.h>

#include "common/Text.h"

namespace ktrv::windows {

/// A view of the BSTR, valid until it is freed; empty for null.
inline StringView TextOf(BSTR text) {
  return {reinterpret_cast<const char16_t*>(text), SysStringLen(text)};
}

/// A view of an optional by-reference argument; empty when the caller omits it (null).
inline StringView TextOf(const BSTR* text) {
  return text ? TextOf(*text) : StringView();
}

/// Allocates a BSTR; the caller frees it. \throws std::bad_alloc
BSTR NewBstr(StringView text);

}  // namespace ktrv::windows
